import { useState } from "react";
import { evaluate, derivative, simplify, mean, std, round } from "mathjs";

export default function Stats() {
  const [values] = useState<number[]>([2, 4, 4, 5]);
  return <p>{mean(values)} · {round(std(values) as number, 3)} · {derivative("x^2 + 3x", "x").toString()}
    · {simplify("2x + 3x").toString()} · {evaluate("12 / 4 * (1 + 2)")}</p>;
}
