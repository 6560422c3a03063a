import React, { useEffect, useRef } from 'react';
import Chart from 'chart.js/auto';

export default function ChartDemo() {
  const canvasRef = useRef(null);
  useEffect(() => {
    const chart = new Chart(canvasRef.current, {
      type: 'bar',
      data: { labels: ['Red', 'Blue', 'Yellow'], datasets: [{ label: 'Votes', data: [12, 19, 3], backgroundColor: ['#ef4444', '#3b82f6', '#eab308'] }] },
      options: { animation: false, responsive: false },
    });
    return () => chart.destroy();
  }, []);
  return <div className="p-6"><canvas ref={canvasRef} width={400} height={240} /></div>;
}
