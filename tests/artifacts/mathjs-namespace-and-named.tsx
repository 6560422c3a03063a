import { useState } from "react";
import * as math from "mathjs";
import { evaluate, derivative, simplify, mean, std, round } from "mathjs";

export default function Stats() {
  const [values] = useState<number[]>([2, 4, 4, 5]);
  return <p>{mean(values)} · {round(std(values) as number, 3)} · {derivative("x^2 + 3x", "x").toString()}
    · {simplify("2x + 3x").toString()} · {evaluate("12 / 4 * (1 + 2)")}
    · {math.format(math.evaluate("sqrt(16) + 2^3"), { precision: 10 })} · {math.multiply(math.matrix([[1, 2], [3, 4]]), 2).toString()}</p>;
}
