import { useState } from "react";
import { BarChart, Bar, PieChart, Pie, Cell, XAxis, YAxis, Tooltip, ResponsiveContainer, AreaChart, Area } from "recharts";

const COLORS = ["#0088FE", "#00C49F", "#FFBB28", "#FF8042"];
const share = [
  { name: "Desktop", value: 400 }, { name: "Mobile", value: 300 },
  { name: "Tablet", value: 200 }, { name: "Other", value: 100 },
];

export default function Analytics() {
  const [range, setRange] = useState(7);
  const daily = Array.from({ length: range }, (_, i) => ({ day: `D${i + 1}`, visits: 100 + ((i * 37) % 90) }));
  return (
    <div className="grid gap-6 p-6 md:grid-cols-2">
      <section className="rounded-xl border p-4">
        <div className="mb-2 flex gap-2">
          {[7, 14, 30].map((n) => (
            <button key={n} onClick={() => setRange(n)}
              className={`rounded px-2 py-1 text-sm ${range === n ? "bg-blue-600 text-white" : "bg-gray-100"}`}>{n}d</button>
          ))}
        </div>
        <ResponsiveContainer width="100%" height={240}>
          <BarChart data={daily}><XAxis dataKey="day" /><YAxis /><Tooltip /><Bar dataKey="visits" fill="#6366f1" radius={[4, 4, 0, 0]} /></BarChart>
        </ResponsiveContainer>
      </section>
      <section className="rounded-xl border p-4">
        <PieChart width={300} height={240}>
          <Pie data={share} dataKey="value" nameKey="name" cx="50%" cy="50%" outerRadius={80} label>
            {share.map((entry, index) => <Cell key={entry.name} fill={COLORS[index % COLORS.length]} />)}
          </Pie>
          <Tooltip />
        </PieChart>
      </section>
      <section className="rounded-xl border p-4 md:col-span-2">
        <AreaChart width={600} height={160} data={daily}>
          <Area type="monotone" dataKey="visits" stroke="#10b981" fill="#d1fae5" />
        </AreaChart>
      </section>
    </div>
  );
}
