import { useState, useCallback, useEffect } from "react";
import _, { chunk, uniq, range } from "lodash";
import debounce from "lodash/debounce";
import throttle from "lodash/throttle";

const people = [{ name: "Ada", team: "core" }, { name: "Ken", team: "kernel" }, { name: "Grace", team: "core" }];

export default function SearchBox() {
  const [echo, setEcho] = useState("");
  const update = useCallback(debounce(setEcho, 200), []);
  useEffect(() => () => update.cancel(), [update]);
  return <div onScroll={throttle(() => {}, 100)}>
    <input onChange={(e) => update(e.target.value)} /> Echo: {echo}
    <p>{chunk(range(6), 2).join(" ")} · {uniq([1, 1, 2]).length} · {_.map(_.groupBy(people, "team"), _.size).join("/")}</p>
  </div>;
}
