import React, { useRef, useEffect } from 'react';
import * as d3 from 'd3';

const data = [12, 5, 9];

export default function D3Bars() {
  const ref = useRef(null);
  useEffect(() => {
    const svg = d3.select(ref.current).attr('width', 300).attr('height', 220);
    const x = d3.scaleBand().domain(data.map((_, i) => i)).range([0, 300]).padding(0.1);
    const y = d3.scaleLinear().domain([0, d3.max(data)]).range([200, 0]);
    svg.selectAll('rect').data(data).join('rect').attr('x', (_, i) => x(i)).attr('y', y)
      .attr('width', x.bandwidth()).attr('height', (d) => 200 - y(d));
    svg.append('g').attr('transform', 'translate(0,200)').call(d3.axisBottom(x));
  }, []);
  return <svg ref={ref} />;
}
