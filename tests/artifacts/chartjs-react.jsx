import { Chart as ChartJS, ArcElement, Tooltip, Legend } from "chart.js";
import { Doughnut } from "react-chartjs-2";

ChartJS.register(ArcElement, Tooltip, Legend);

const data = { labels: ["Rent", "Food"], datasets: [{ data: [1200, 400], backgroundColor: ["#6366f1", "#f59e0b"] }] };

export default function Budget() {
  return <div className="w-72"><Doughnut data={data} options={{ animation: false }} /></div>;
}
