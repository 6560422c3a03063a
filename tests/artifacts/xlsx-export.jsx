import React, { useState } from "react";
import * as XLSX from "xlsx";

export default function SheetTool() {
  const [rows] = useState([{ Product: "Widget", Price: 9.99 }, { Product: "Gadget", Price: 19.5 }]);
  const sheet = XLSX.utils.json_to_sheet(rows);
  const book = XLSX.utils.book_new();
  XLSX.utils.book_append_sheet(book, sheet, "Prices");
  const bytes = XLSX.write(book, { type: "array", bookType: "xlsx" });
  return <pre>{XLSX.utils.sheet_to_csv(sheet)} · sheets: {XLSX.read(bytes, { type: "array" }).SheetNames.join(", ")}</pre>;
}
