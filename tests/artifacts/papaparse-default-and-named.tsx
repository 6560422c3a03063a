import Papa, { parse, unparse } from "papaparse";

type Row = { item: string; qty: number };

export default function Totals() {
  const result = parse<Row>("item,qty\napple,3\npear,5", { header: true, dynamicTyping: true });
  const total = result.data.reduce((sum, row) => sum + (row.qty || 0), 0);
  return <div className="p-6"><p>Total: {total}</p><pre>{unparse([{ a: 1, b: 2 }])} · {Papa.unparse(result.data.slice(0, 1))}</pre></div>;
}
