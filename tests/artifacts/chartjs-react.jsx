import { Chart as ChartJS, ArcElement, Tooltip, Legend } from "chart.js";
import { Doughnut } from "react-chartjs-2";

ChartJS.register(ArcElement, Tooltip, Legend);

const data = { labels: ["Rent", "Food", "Fun"], datasets: [{ data: [1200, 400, 150], backgroundColor: ["#6366f1", "#f59e0b", "#ec4899"] }] };

export default function Budget() {
  return <div className="mx-auto w-72 p-4"><Doughnut data={data} options={{ animation: false }} /></div>;
}
