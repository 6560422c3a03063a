import { useState, useCallback, useEffect } from "react";
import debounce from "lodash/debounce";
import throttle from "lodash/throttle";
import { chunk, uniq, range } from "lodash";
import shuffle from "lodash/shuffle";

export default function SearchBox() {
  const [text, setText] = useState("");
  const [echo, setEcho] = useState("");
  const update = useCallback(debounce((value) => setEcho(value), 200), []);
  useEffect(() => () => update.cancel(), [update]);
  const onScroll = throttle(() => {}, 100);
  return (
    <div className="p-6" onScroll={onScroll}>
      <input className="border p-2" value={text} onChange={(e) => { setText(e.target.value); update(e.target.value); }} />
      <p>Echo: {echo}</p>
      <p>{chunk(range(6), 2).map((c) => `[${c}]`).join(" ")} · {uniq([1, 1, 2]).length} · {shuffle([1, 2, 3]).length}</p>
    </div>
  );
}
