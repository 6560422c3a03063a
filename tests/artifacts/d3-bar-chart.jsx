import React, { useRef, useEffect } from 'react';
import * as d3 from 'd3';

const data = [12, 5, 6, 6, 9, 10, 14, 3];

export default function D3Bars() {
  const ref = useRef(null);
  useEffect(() => {
    const svg = d3.select(ref.current);
    svg.selectAll('*').remove();
    const width = 400, height = 200;
    const x = d3.scaleBand().domain(data.map((_, i) => i)).range([0, width]).padding(0.1);
    const y = d3.scaleLinear().domain([0, d3.max(data)]).range([height, 0]);
    svg.attr('width', width).attr('height', height + 20);
    svg.selectAll('rect').data(data).enter().append('rect')
      .attr('x', (_, i) => x(i)).attr('y', d => y(d))
      .attr('width', x.bandwidth()).attr('height', d => height - y(d))
      .attr('fill', 'steelblue');
    svg.append('g').attr('transform', `translate(0,${height})`).call(d3.axisBottom(x));
  }, []);
  return <div className="p-4"><svg ref={ref} /></div>;
}
