import { useEffect, useRef } from "react";
import { Chart, registerables, LineController, LineElement } from "chart.js";
Chart.register(...registerables);

export default function Trend() {
  const ref = useRef(null);
  useEffect(() => {
    const chart = new Chart(ref.current.getContext("2d"), {
      type: "line",
      data: { labels: [1, 2, 3, 4], datasets: [{ label: "Load", data: [3, 1, 4, 1], borderColor: "#10b981" }] },
      options: { animation: false },
    });
    return () => chart.destroy();
  }, []);
  return <div className="h-64 w-full p-4"><canvas ref={ref} data-controller={LineController.id} data-element={LineElement.id} /></div>;
}
