import { useEffect, useState } from "react";

export default function PersistentNotes() {
  const [notes, setNotes] = useState([]);
  useEffect(() => { (async () => {
    try { const result = await window.storage.get("notes"); if (result) setNotes(JSON.parse(result.value)); }
    catch (e) { console.log("no notes yet"); }
  })(); }, []);
  const add = async () => {
    const next = [...notes, `Note ${notes.length + 1}`];
    setNotes(next);
    await window.storage.set("notes", JSON.stringify(next));
  };
  return <div><button id="add" onClick={add}>Add note</button><ul id="notes">{notes.map((n) => <li key={n}>{n}</li>)}</ul></div>;
}
