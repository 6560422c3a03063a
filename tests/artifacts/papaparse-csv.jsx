import React, { useState } from 'react';
import Papa from 'papaparse';

const SAMPLE = "name,score\nAlice,92\nBob,85\n";

export default function CsvViewer() {
  const [rows] = useState(() => Papa.parse(SAMPLE, { header: true, dynamicTyping: true, skipEmptyLines: true }).data);
  return <table>
    <tbody>{rows.map((r, i) => <tr key={i}>{Object.values(r).map((v, j) => <td key={j}>{v}</td>)}</tr>)}</tbody>
    <caption>{Papa.unparse(rows.slice(0, 1))}</caption>
  </table>;
}
