import { useState } from "react";

type Status = "todo" | "doing" | "done";
interface Card { id: number; title: string; status: Status }

const columns: { key: Status; color: string }[] =
  [{ key: "todo", color: "border-t-slate-400" }, { key: "doing", color: "border-t-amber-400" }, { key: "done", color: "border-t-emerald-500" }];

export default function Kanban() {
  const [cards, setCards] = useState<Card[]>([{ id: 1, title: "Design", status: "doing" }, { id: 2, title: "Ship", status: "todo" }]);
  const advance = (id: number) => setCards((cs) => cs.map((c) => (c.id === id ? { ...c, status: c.status === "todo" ? "doing" : "done" } : c)));
  return <div className="grid grid-cols-1 gap-4 bg-zinc-100 p-4 dark:bg-zinc-900 sm:p-8 md:grid-cols-3">
    {columns.map((col) => <div key={col.key} className={`rounded-xl border-t-4 ${col.color} bg-white p-3 uppercase tracking-wide`}>
      {col.key}
      {cards.filter((c) => c.status === col.key).map((c) => (
        <button key={c.id} onClick={() => advance(c.id)} className="group w-full truncate transition hover:-translate-y-0.5 hover:shadow-md">
          <span className="group-hover:text-indigo-600">{c.title}</span></button>))}
    </div>)}
  </div>;
}
