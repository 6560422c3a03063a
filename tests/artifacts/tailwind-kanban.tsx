import { useState } from "react";

type Status = "todo" | "doing" | "done";
interface Card { id: number; title: string; status: Status }

const columns: { key: Status; label: string; color: string }[] = [
  { key: "todo", label: "To do", color: "border-t-slate-400" },
  { key: "doing", label: "In progress", color: "border-t-amber-400" },
  { key: "done", label: "Done", color: "border-t-emerald-500" },
];

export default function Kanban() {
  const [cards, setCards] = useState<Card[]>([
    { id: 1, title: "Write brief", status: "done" }, { id: 2, title: "Design", status: "doing" }, { id: 3, title: "Ship", status: "todo" },
  ]);
  const advance = (id: number) => setCards((cs) => cs.map((c) => c.id === id ? { ...c, status: c.status === "todo" ? "doing" : "done" } : c));
  return (
    <div className="min-h-screen bg-zinc-100 p-4 dark:bg-zinc-900 sm:p-8">
      <div className="grid grid-cols-1 gap-4 md:grid-cols-3">
        {columns.map((col) => (
          <div key={col.key} className={`rounded-xl border-t-4 ${col.color} bg-white p-3 shadow-sm`}>
            <h2 className="mb-3 text-sm font-semibold uppercase tracking-wide text-zinc-500">{col.label}</h2>
            <div className="space-y-2">
              {cards.filter((c) => c.status === col.key).map((c) => (
                <button key={c.id} onClick={() => advance(c.id)} className="group w-full truncate rounded-lg border border-zinc-200 bg-zinc-50 p-3 text-left transition hover:-translate-y-0.5 hover:shadow-md">
                  <span className="group-hover:text-indigo-600">{c.title}</span>
                </button>
              ))}
            </div>
          </div>
        ))}
      </div>
    </div>
  );
}
