import * as XLSX from "xlsx";
import { utils, read } from "xlsx";

export default function Parsed() {
  const book = read("a,b\n1,2\n3,4", { type: "string" });
  const json = utils.sheet_to_json<Record<string, number>>(book.Sheets[book.SheetNames[0]]);
  const bytes = XLSX.write(book, { type: "array", bookType: "xlsx" });
  return <ul className="p-6">{json.map((row, i) => <li key={i}>{row.a} + {row.b} = {row.a + row.b}</li>)}
    <li>sheets: {XLSX.read(bytes, { type: "array" }).SheetNames.join(", ")}</li></ul>;
}
