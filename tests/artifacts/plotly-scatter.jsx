import React, { useEffect, useRef } from 'react';
import Plotly from 'plotly';

export default function Scatter() {
  const ref = useRef(null);
  useEffect(() => {
    Plotly.newPlot(ref.current, [{ x: [0, 1, 2], y: [0, 1, 4], mode: 'lines+markers', type: 'scatter' }],
      { title: 'Squares' }, { displayModeBar: false });
    return () => Plotly.purge(ref.current);
  }, []);
  return <div ref={ref} />;
}
