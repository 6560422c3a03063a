import { useEffect, useState } from "react";

// Notes kept with window.storage, the way artifacts persist state.
export default function PersistentNotes() {
  const [notes, setNotes] = useState([]);
  const [loaded, setLoaded] = useState(false);
  useEffect(() => {
    (async () => {
      try {
        const result = await window.storage.get("notes");
        if (result) setNotes(JSON.parse(result.value));
      } catch (e) { console.log("no notes yet"); }
      setLoaded(true);
    })();
  }, []);
  const add = async () => {
    const next = [...notes, `Note ${notes.length + 1}`];
    setNotes(next);
    await window.storage.set("notes", JSON.stringify(next));
  };
  return (
    <div className="p-6">
      <button id="add" onClick={add} className="rounded bg-blue-600 px-3 py-1 text-white">Add note</button>
      <ul id="notes" data-loaded={loaded}>{notes.map((n) => <li key={n}>{n}</li>)}</ul>
    </div>
  );
}
