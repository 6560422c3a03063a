import { useEffect, useRef } from "react";
import * as Plotly from "plotly.js-dist-min";

export default function Heatmap() {
  const ref = useRef(null);
  useEffect(() => {
    Plotly.newPlot(ref.current, [{ z: [[1, 20, 30], [20, 1, 60], [30, 60, 1]], type: "heatmap" }], { width: 400, height: 300 });
  }, []);
  return <div ref={ref} />;
}
