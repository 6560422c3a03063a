import React, { useMemo } from "react";
import { ComposedChart, Bar, Line, XAxis, YAxis, Tooltip, CartesianGrid, ResponsiveContainer, RadarChart, PolarGrid, PolarAngleAxis, Radar } from "recharts";

type Point = { week: string; signups: number; churn: number };

const skills = [
  { skill: "Speed", a: 80 }, { skill: "Power", a: 65 }, { skill: "Range", a: 90 },
  { skill: "Stamina", a: 70 }, { skill: "Focus", a: 85 },
];

const Growth: React.FC = () => {
  const points: Point[] = useMemo(() => [1, 2, 3, 4, 5, 6].map((w) => ({ week: `W${w}`, signups: w * 40, churn: 60 - w * 5 })), []);
  return (
    <div className="flex flex-col gap-4 p-4">
      <div className="h-64">
        <ResponsiveContainer>
          <ComposedChart data={points}>
            <CartesianGrid stroke="#eee" />
            <XAxis dataKey="week" /><YAxis /><Tooltip />
            <Bar dataKey="signups" barSize={20} fill="#413ea0" />
            <Line dataKey="churn" stroke="#ff7300" />
          </ComposedChart>
        </ResponsiveContainer>
      </div>
      <RadarChart width={320} height={260} data={skills}>
        <PolarGrid /><PolarAngleAxis dataKey="skill" />
        <Radar dataKey="a" stroke="#8884d8" fill="#8884d8" fillOpacity={0.6} />
      </RadarChart>
    </div>
  );
};

export default Growth;
