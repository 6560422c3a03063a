import React, { useState } from 'react';
import Papa from 'papaparse';

const SAMPLE = `name,score,city
Alice,92,Berlin
Bob,85,Lisbon
Chen,78,Taipei`;

export default function CsvViewer() {
  const [rows] = useState(() => Papa.parse(SAMPLE, { header: true, dynamicTyping: true, skipEmptyLines: true }).data);
  return (
    <div className="p-6">
      <table className="min-w-full divide-y divide-gray-200 border">
        <thead className="bg-gray-100"><tr>{Object.keys(rows[0]).map(k => <th key={k} className="px-4 py-2 text-left">{k}</th>)}</tr></thead>
        <tbody>{rows.map((r, i) => <tr key={i} className="odd:bg-white even:bg-gray-50">{Object.values(r).map((v, j) => <td key={j} className="px-4 py-2">{v}</td>)}</tr>)}</tbody>
      </table>
      <pre className="mt-4 text-xs">{Papa.unparse(rows.slice(0, 1))}</pre>
    </div>
  );
}
