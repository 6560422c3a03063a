import React, { useState } from "react";
import styled from "styled-components";
import { Switch } from "@headlessui/react";
import { Prism as SyntaxHighlighter } from "react-syntax-highlighter";
import { oneDark } from "react-syntax-highlighter/dist/cjs/styles/prism";
import { SketchPicker } from "react-color";
import _ from "https://cdn.jsdelivr.net/npm/lodash@4.17.21/+esm";
import { Button } from "./ui/button";
import { Analytics } from "@vercel/analytics/react";

const Title = styled.h1`
  color: rgb(200, 30, 90);
  font-size: 22px;
`;

export default function Gallery() {
  const [enabled, setEnabled] = useState(true);
  return (
    <div className="p-4 space-y-3">
      <Title id="title">Styled</Title>
      <Switch id="switch" checked={enabled} onChange={setEnabled}
        className="inline-flex h-6 w-11 rounded-full bg-emerald-500 data-[checked]:bg-emerald-600" />
      <div id="code">
        <SyntaxHighlighter language="jsx" style={oneDark}>{"const answer = <b>{42}</b>;"}</SyntaxHighlighter>
      </div>
      <div id="picker"><SketchPicker color="#ff6600" /></div>
      <p id="cdn">{_.chunk([1, 2, 3, 4], 2).length}</p>
      <Button id="button">Save</Button>
      <Analytics />
    </div>
  );
}
