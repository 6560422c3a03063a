import React, { useEffect, useRef } from 'react';
import Plotly from 'plotly';

export default function Scatter() {
  const ref = useRef(null);
  useEffect(() => {
    const xs = Array.from({ length: 50 }, (_, i) => i / 5);
    Plotly.newPlot(ref.current, [{ x: xs, y: xs.map(Math.sin), mode: 'lines+markers', type: 'scatter' }],
      { title: 'sin(x)', margin: { t: 40 } }, { staticPlot: false, displayModeBar: false });
    return () => Plotly.purge(ref.current);
  }, []);
  return <div ref={ref} className="h-96 w-full" />;
}
