import React, { useMemo } from "react";
import { ComposedChart, Bar, Line, XAxis, YAxis, Tooltip, CartesianGrid, ResponsiveContainer, RadarChart, PolarGrid, PolarAngleAxis, Radar } from "recharts";

type Point = { week: string; signups: number; churn: number };

const skills = [{ skill: "Speed", a: 80 }, { skill: "Power", a: 65 }, { skill: "Range", a: 90 }];

const Growth: React.FC = () => {
  const points: Point[] = useMemo(() => [1, 2, 3].map((w) => ({ week: `W${w}`, signups: w * 40, churn: 60 - w * 5 })), []);
  return <>
    <div className="h-64"><ResponsiveContainer><ComposedChart data={points}>
      <CartesianGrid /><XAxis dataKey="week" /><YAxis /><Tooltip /><Bar dataKey="signups" /><Line dataKey="churn" />
    </ComposedChart></ResponsiveContainer></div>
    <RadarChart width={320} height={260} data={skills}><PolarGrid /><PolarAngleAxis dataKey="skill" /><Radar dataKey="a" /></RadarChart>
  </>;
};

export default Growth;
