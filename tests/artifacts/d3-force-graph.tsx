import { useEffect, useRef } from "react";
import { forceSimulation, forceLink, forceManyBody, forceCenter } from "d3-force";
import { select } from "d3-selection";
import { scaleOrdinal } from "d3-scale";
import { schemeCategory10 } from "d3-scale-chromatic";

interface Node { id: string; group: number; x?: number; y?: number }
interface Link { source: string; target: string }

const nodes: Node[] = ["a", "b", "c", "d", "e"].map((id, i) => ({ id, group: i % 3 }));
const links: Link[] = [{ source: "a", target: "b" }, { source: "b", target: "c" }, { source: "c", target: "d" }, { source: "d", target: "e" }];

export default function ForceGraph() {
  const svgRef = useRef<SVGSVGElement | null>(null);
  useEffect(() => {
    const color = scaleOrdinal(schemeCategory10);
    const svg = select(svgRef.current!);
    const circles = svg.selectAll("circle").data(nodes).join("circle").attr("r", 8).attr("fill", (d) => color(String(d.group)));
    const sim = forceSimulation(nodes as any)
      .force("link", forceLink(links as any).id((d: any) => d.id))
      .force("charge", forceManyBody().strength(-80))
      .force("center", forceCenter(150, 100))
      .on("tick", () => circles.attr("cx", (d: any) => d.x).attr("cy", (d: any) => d.y));
    return () => { sim.stop(); };
  }, []);
  return <svg ref={svgRef} width={300} height={200} className="border" />;
}
