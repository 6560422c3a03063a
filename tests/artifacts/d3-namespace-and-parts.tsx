import { useEffect, useRef } from "react";
import * as d3 from "d3";
import { forceSimulation, forceLink, forceManyBody, forceCenter } from "d3-force";
import { select } from "d3-selection";
import { scaleOrdinal } from "d3-scale";
import { schemeCategory10 } from "d3-scale-chromatic";

interface Node { id: string; x?: number; y?: number }
const nodes: Node[] = [{ id: "a" }, { id: "b" }, { id: "c" }];
const links = [{ source: "a", target: "b" }, { source: "b", target: "c" }];

export default function ForceGraph() {
  const svgRef = useRef<SVGSVGElement | null>(null);
  useEffect(() => {
    const color = scaleOrdinal(schemeCategory10);
    const svg = select(svgRef.current!);
    svg.append("g").attr("transform", "translate(0,180)")
      .call(d3.axisBottom(d3.scaleLinear().domain([0, d3.max([12, 5, 9])!]).range([0, 300])));
    const circles = svg.selectAll("circle").data(nodes).join("circle").attr("r", 8).attr("fill", (d) => color(d.id));
    const sim = forceSimulation(nodes as any).force("link", forceLink(links as any).id((d: any) => d.id))
      .force("charge", forceManyBody().strength(-80)).force("center", forceCenter(150, 100))
      .on("tick", () => circles.attr("cx", (d: any) => d.x).attr("cy", (d: any) => d.y));
    return () => { sim.stop(); };
  }, []);
  return <svg ref={svgRef} width={300} height={200} />;
}
