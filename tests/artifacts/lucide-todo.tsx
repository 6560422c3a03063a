import { useState } from "react";
import { Plus, Trash2, Check, Circle, ListTodo } from "lucide-react";

interface Todo { id: number; text: string; done: boolean }

export default function TodoApp() {
  const [todos, setTodos] = useState<Todo[]>([
    { id: 1, text: "Sketch the layout", done: true },
    { id: 2, text: "Wire up state", done: false },
  ]);
  const [draft, setDraft] = useState<string>("");
  const add = () => {
    if (!draft.trim()) return;
    setTodos((list) => [...list, { id: Date.now(), text: draft.trim(), done: false }]);
    setDraft("");
  };
  const toggle = (id: number) => setTodos((list) => list.map((t) => (t.id === id ? { ...t, done: !t.done } : t)));
  return (
    <div className="mx-auto mt-10 max-w-md rounded-2xl bg-white p-6 shadow-lg">
      <h1 className="mb-4 flex items-center gap-2 text-2xl font-bold"><ListTodo className="text-purple-600" /> Tasks</h1>
      <div className="mb-4 flex gap-2">
        <input className="flex-1 rounded-md border px-3 py-2" value={draft}
          onChange={(e: React.ChangeEvent<HTMLInputElement>) => setDraft(e.target.value)}
          onKeyDown={(e) => e.key === "Enter" && add()} placeholder="Add a task" />
        <button onClick={add} className="rounded-md bg-purple-600 px-3 text-white hover:bg-purple-700"><Plus size={18} /></button>
      </div>
      <ul className="space-y-2">
        {todos.map((todo) => (
          <li key={todo.id} className="flex items-center justify-between rounded-lg bg-gray-50 px-3 py-2">
            <button onClick={() => toggle(todo.id)} className="flex items-center gap-2">
              {todo.done ? <Check className="text-green-500" size={18} /> : <Circle size={18} className="text-gray-300" />}
              <span className={todo.done ? "text-gray-400 line-through" : ""}>{todo.text}</span>
            </button>
            <button onClick={() => setTodos((l) => l.filter((t) => t.id !== todo.id))}><Trash2 size={16} className="text-red-400 hover:text-red-600" /></button>
          </li>
        ))}
      </ul>
    </div>
  );
}
