import React, { useState } from 'react';
import * as math from 'mathjs';

export default function Calculator() {
  const [expr, setExpr] = useState('sqrt(16) + 2^3');
  let result;
  try { result = math.format(math.evaluate(expr), { precision: 10 }); } catch (e) { result = 'Error'; }
  return <div>
    <input value={expr} onChange={(e) => setExpr(e.target.value)} /> = <span id="result">{result}</span>
    <p>{math.multiply(math.matrix([[1, 2], [3, 4]]), 2).toString()} · {math.unit(5, 'cm').toNumber('inch')}</p>
  </div>;
}
