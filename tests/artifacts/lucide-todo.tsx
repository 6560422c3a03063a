import { useState } from "react";
import { Plus, Trash2, Check, Circle, ListTodo } from "lucide-react";

interface Todo { id: number; text: string; done: boolean }

export default function TodoApp() {
  const [todos, setTodos] = useState<Todo[]>([{ id: 1, text: "Sketch", done: true }, { id: 2, text: "Wire up", done: false }]);
  const [draft, setDraft] = useState<string>("");
  const toggle = (id: number) => setTodos((list) => list.map((t) => (t.id === id ? { ...t, done: !t.done } : t)));
  return <div>
    <ListTodo /><input value={draft} onChange={(e: React.ChangeEvent<HTMLInputElement>) => setDraft(e.target.value)} />
    <button onClick={() => setTodos([...todos, { id: Date.now(), text: draft, done: false }])}><Plus size={18} /></button>
    {todos.map((todo) => <p key={todo.id} onClick={() => toggle(todo.id)}>
      {todo.done ? <Check size={18} /> : <Circle size={18} />} {todo.text}
      <Trash2 size={16} onClick={() => setTodos((l) => l.filter((t) => t.id !== todo.id))} />
    </p>)}
  </div>;
}
