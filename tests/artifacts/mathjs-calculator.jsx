import React, { useState } from 'react';
import * as math from 'mathjs';

export default function Calculator() {
  const [expr, setExpr] = useState('sqrt(16) + 2^3');
  let result;
  try { result = math.format(math.evaluate(expr), { precision: 10 }); } catch (e) { result = 'Error'; }
  const matrix = math.multiply(math.matrix([[1, 2], [3, 4]]), 2);
  return (
    <div className="mx-auto max-w-sm p-6">
      <input className="w-full rounded border p-2 font-mono" value={expr} onChange={e => setExpr(e.target.value)} />
      <p className="mt-3 text-3xl font-bold" id="result">{result}</p>
      <p className="text-sm text-gray-500">2x matrix: {matrix.toString()}</p>
      <p className="text-sm text-gray-500">5 cm in inch: {math.unit(5, 'cm').toNumber('inch').toFixed(3)}</p>
    </div>
  );
}
