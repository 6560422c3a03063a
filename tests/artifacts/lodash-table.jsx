import React, { useState, useMemo } from "react";
import _ from "lodash";

const people = [
  { name: "Ada", team: "Core", age: 36 }, { name: "Linus", team: "Kernel", age: 54 },
  { name: "Grace", team: "Core", age: 45 }, { name: "Ken", team: "Kernel", age: 80 },
];

export default function Grouped() {
  const [key, setKey] = useState("age");
  const groups = useMemo(() => _.groupBy(_.sortBy(people, key), "team"), [key]);
  return (
    <div className="p-6">
      <select value={key} onChange={(e) => setKey(e.target.value)} className="mb-4 rounded border p-1">
        <option value="age">Age</option><option value="name">Name</option>
      </select>
      {_.map(groups, (members, team) => (
        <div key={team} className="mb-3">
          <h3 className="font-semibold">{_.capitalize(team)} ({_.size(members)})</h3>
          <p>{members.map((m) => m.name).join(", ")} — average {_.round(_.meanBy(members, "age"), 1)}</p>
        </div>
      ))}
    </div>
  );
}
