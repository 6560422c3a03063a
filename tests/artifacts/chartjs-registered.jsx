import { useEffect, useRef } from "react";
import { Chart, registerables, LineController, LineElement } from "chart.js";
Chart.register(...registerables);

export default function Trend() {
  const ref = useRef(null);
  useEffect(() => {
    const chart = new Chart(ref.current.getContext("2d"), { type: "line", options: { animation: false },
      data: { labels: [1, 2, 3], datasets: [{ label: "Load", data: [3, 1, 4] }] } });
    return () => chart.destroy();
  }, []);
  return <div className="h-64"><canvas ref={ref} data-controller={LineController.id} data-element={LineElement.id} /></div>;
}
