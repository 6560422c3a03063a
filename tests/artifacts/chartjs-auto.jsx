import React, { useEffect, useRef } from 'react';
import Chart from 'chart.js/auto';

export default function ChartDemo() {
  const canvasRef = useRef(null);
  useEffect(() => {
    const chart = new Chart(canvasRef.current, { type: 'bar', options: { animation: false, responsive: false },
      data: { labels: ['Red', 'Blue'], datasets: [{ label: 'Votes', data: [12, 19] }] } });
    return () => chart.destroy();
  }, []);
  return <canvas ref={canvasRef} width={400} height={240} />;
}
