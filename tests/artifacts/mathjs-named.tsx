import { useState } from "react";
import { evaluate, derivative, simplify, mean, std, round } from "mathjs";

export default function Stats() {
  const [values] = useState<number[]>([2, 4, 4, 4, 5, 5, 7, 9]);
  const d = derivative("x^2 + 3x", "x").toString();
  return (
    <div className="space-y-2 p-6 font-mono">
      <div>mean: {mean(values)}</div>
      <div>std: {round(std(values) as number, 3)}</div>
      <div>d/dx: {d}</div>
      <div>simplified: {simplify("2x + 3x").toString()}</div>
      <div>eval: {evaluate("12 / 4 * (1 + 2)")}</div>
    </div>
  );
}
