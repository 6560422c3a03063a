import { useState } from "react";
import clsx from "clsx";
import { twMerge } from "tailwind-merge";
import { cva } from "class-variance-authority";
import { v4 as uuidv4 } from "uuid";

const pill = cva("rounded-full px-3 py-1 text-sm", {
  variants: { tone: { info: "bg-sky-100 text-sky-800", warn: "bg-amber-100 text-amber-800" } },
  defaultVariants: { tone: "info" },
});

export default function Notes() {
  const [notes, setNotes] = useState([{ id: uuidv4(), text: "First", urgent: false }]);
  return (
    <div className="p-6">
      <button className={twMerge("rounded bg-gray-200 px-2 py-1", "bg-blue-600 text-white")}
        onClick={() => setNotes([...notes, { id: uuidv4(), text: `Note ${notes.length + 1}`, urgent: notes.length % 2 === 0 }])}>Add</button>
      {notes.map((n) => (
        <p key={n.id} data-id={n.id} className={clsx("mt-2", pill({ tone: n.urgent ? "warn" : "info" }), { "font-bold": n.urgent })}>{n.text}</p>
      ))}
    </div>
  );
}
