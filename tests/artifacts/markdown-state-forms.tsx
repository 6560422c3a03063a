import React from "react";
import ReactMarkdown from "react-markdown";
import remarkGfm from "remark-gfm";
import { marked } from "marked";
import Prism from "prismjs";
import { create } from "zustand";
import { persist } from "zustand/middleware";
import { atom, useAtom } from "jotai";
import { produce } from "immer";
import { MemoryRouter, Routes, Route, Link } from "react-router-dom";
import { useForm } from "react-hook-form";
import { zodResolver } from "@hookform/resolvers/zod";
import { z } from "zod";
import * as yup from "yup";

const useCounter = create<{ count: number; add: () => void }>()((set) => ({
  count: 1, add: () => set((s) => ({ count: s.count + 1 })),
}));
const useSaved = create(persist(() => ({ saved: true }), { name: "saved" }));
const nameAtom = atom("Ada");
const schema = z.object({ email: z.string().email() });

export default function Notes() {
  const count = useCounter((s) => s.count);
  const saved = useSaved((s) => s.saved);
  const [name] = useAtom(nameAtom);
  const next = produce({ list: [1] }, (draft) => { draft.list.push(2); });
  const { register } = useForm<{ email: string }>({ resolver: zodResolver(schema) });
  const valid = yup.string().email().isValidSync("a@b.co");
  const code = Prism.highlight("const x = <b />;", Prism.languages.jsx, "jsx");
  return (
    <MemoryRouter>
      <div id="facts">{count} {String(saved)} {name} {next.list.length} {String(valid)}</div>
      <div id="markdown"><ReactMarkdown remarkPlugins={[remarkGfm]}>{"| a | b |\n|---|---|\n| 1 | 2 |"}</ReactMarkdown></div>
      <div id="marked" dangerouslySetInnerHTML={{ __html: marked.parse("**bold**") as string }} />
      <pre id="code" dangerouslySetInnerHTML={{ __html: code }} />
      <form><input {...register("email")} /></form>
      <Link to="/about">About</Link>
      <Routes>
        <Route path="/" element={<p id="route">home</p>} />
        <Route path="/about" element={<p id="route">about</p>} />
      </Routes>
    </MemoryRouter>
  );
}
