import React, { useState, useMemo } from "react";
import _ from "lodash";

const people = [{ name: "Ada", team: "core", age: 36 }, { name: "Ken", team: "kernel", age: 80 }, { name: "Grace", team: "core", age: 45 }];

export default function Grouped() {
  const [key, setKey] = useState("age");
  const groups = useMemo(() => _.groupBy(_.sortBy(people, key), "team"), [key]);
  return <div onClick={() => setKey(key === "age" ? "name" : "age")}>
    {_.map(groups, (members, team) => <p key={team}>{_.capitalize(team)} ({_.size(members)}):
      {members.map((m) => m.name).join(", ")}, average age {_.round(_.meanBy(members, "age"), 1)}</p>)}
  </div>;
}
