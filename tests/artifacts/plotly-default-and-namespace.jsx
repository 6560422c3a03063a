import { useEffect, useRef } from "react";
import Plotly from "plotly";
import * as PlotlyDist from "plotly.js-dist-min";

export default function Plots() {
  const scatter = useRef(null);
  const heatmap = useRef(null);
  useEffect(() => {
    Plotly.newPlot(scatter.current, [{ x: [0, 1, 2], y: [0, 1, 4], mode: "lines+markers", type: "scatter" }], { title: "Squares" });
    PlotlyDist.newPlot(heatmap.current, [{ z: [[1, 20], [20, 1]], type: "heatmap" }], { width: 400, height: 300 });
    return () => Plotly.purge(scatter.current);
  }, []);
  return <div><div ref={scatter} /><div ref={heatmap} /></div>;
}
