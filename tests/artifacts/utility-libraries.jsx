import { useState } from "react";
import clsx from "clsx";
import { twMerge } from "tailwind-merge";
import { cva } from "class-variance-authority";
import { v4 as uuidv4 } from "uuid";

const pill = cva("rounded-full px-3", { variants: { tone: { info: "bg-sky-100", warn: "bg-amber-100" } }, defaultVariants: { tone: "info" } });

export default function Notes() {
  const [notes, setNotes] = useState([{ id: uuidv4(), urgent: false }, { id: uuidv4(), urgent: true }]);
  return <div className={twMerge("bg-gray-200 px-2", "bg-blue-600")} onClick={() => setNotes([...notes, { id: uuidv4(), urgent: false }])}>
    {notes.map((n) => <p key={n.id} className={clsx("mt-2", pill({ tone: n.urgent ? "warn" : "info" }), { "font-bold": n.urgent })}>{n.id}</p>)}
  </div>;
}
