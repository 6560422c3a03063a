import { useState } from "react";
import { BarChart, Bar, PieChart, Pie, Cell, XAxis, YAxis, Tooltip, ResponsiveContainer, AreaChart, Area } from "recharts";

const share = [{ name: "Desktop", value: 400 }, { name: "Mobile", value: 300 }];

export default function Analytics() {
  const [range, setRange] = useState(3);
  const daily = Array.from({ length: range }, (_, i) => ({ day: `D${i + 1}`, visits: 100 + i * 37 }));
  return <div onClick={() => setRange(range + 1)}>
    <ResponsiveContainer width="100%" height={200}>
      <BarChart data={daily}><XAxis dataKey="day" /><YAxis /><Tooltip /><Bar dataKey="visits" fill="#6366f1" /></BarChart>
    </ResponsiveContainer>
    <PieChart width={300} height={200}><Pie data={share} dataKey="value" nameKey="name" outerRadius={80} label>
      {share.map((entry, index) => <Cell key={entry.name} fill={["#0088FE", "#00C49F"][index]} />)}
    </Pie></PieChart>
    <AreaChart width={300} height={100} data={daily}><Area type="monotone" dataKey="visits" /></AreaChart>
  </div>;
}
