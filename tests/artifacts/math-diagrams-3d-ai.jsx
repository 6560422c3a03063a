import React, { useEffect, useRef, useState } from "react";
import "katex/dist/katex.min.css";
import { InlineMath } from "react-katex";
import ReactMarkdown from "react-markdown";
import remarkMath from "remark-math";
import rehypeKatex from "rehype-katex";
import mermaid from "mermaid";
import { ReactFlow, Background } from "@xyflow/react";
import "@xyflow/react/dist/style.css";
import LegacyFlow from "reactflow";
import { Canvas } from "@react-three/fiber";
import { OrbitControls, Box } from "@react-three/drei";
import OpenAI from "openai";

const nodes = [
  { id: "a", position: { x: 20, y: 10 }, data: { label: "Start" } },
  { id: "b", position: { x: 20, y: 110 }, data: { label: "End" } },
];
const edges = [{ id: "a-b", source: "a", target: "b" }];

export default function Gallery() {
  const diagram = useRef(null);
  const [answer, setAnswer] = useState("");
  useEffect(() => {
    mermaid.initialize({ startOnLoad: false });
    mermaid.render("plan", "graph LR; Idea-->Prototype").then(({ svg }) => {
      diagram.current.innerHTML = svg;
    });
    // Nothing listens there: the client's failure should say where it tried.
    const client = new OpenAI({
      apiKey: "sk-none", baseURL: "http://127.0.0.1:9/v1", dangerouslyAllowBrowser: true, maxRetries: 0,
    });
    client.chat.completions.create({ model: "gpt-4o", messages: [{ role: "user", content: "Hi" }] })
      .then(() => setAnswer("answered"), (error) => setAnswer(`${error.message} ${error.cause?.message}`));
  }, []);
  return (
    <div className="grid grid-cols-2 gap-4 p-4">
      <p id="math" className="text-xl"><InlineMath math="e^{i\pi} + 1 = 0" /></p>
      <div id="markdown">
        <ReactMarkdown remarkPlugins={[remarkMath]} rehypePlugins={[rehypeKatex]}>
          {"Area: $\\pi r^2$"}
        </ReactMarkdown>
      </div>
      <div id="diagram" ref={diagram} />
      <div id="scene" style={{ width: 240, height: 160 }}>
        <Canvas><ambientLight /><Box><meshStandardMaterial color="orange" /></Box><OrbitControls /></Canvas>
      </div>
      <div id="flow" style={{ width: 240, height: 200 }}>
        <ReactFlow nodes={nodes} edges={edges}><Background /></ReactFlow>
      </div>
      <div id="legacy-flow" style={{ width: 240, height: 200 }}>
        <LegacyFlow nodes={nodes} edges={edges} />
      </div>
      <p id="ai" className="col-span-2 text-sm">{answer}</p>
    </div>
  );
}
