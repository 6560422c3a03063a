import { useState, useCallback, useEffect } from "react";
import debounce from "lodash/debounce";
import throttle from "lodash/throttle";
import { chunk, uniq, range } from "lodash";
import shuffle from "lodash/shuffle";

export default function SearchBox() {
  const [echo, setEcho] = useState("");
  const update = useCallback(debounce(setEcho, 200), []);
  useEffect(() => () => update.cancel(), [update]);
  return <div onScroll={throttle(() => {}, 100)}>
    <input onChange={(e) => update(e.target.value)} /> Echo: {echo}
    <p>{chunk(range(6), 2).join(" ")} · {uniq([1, 1, 2]).length} · {shuffle([1, 2, 3]).length}</p>
  </div>;
}
