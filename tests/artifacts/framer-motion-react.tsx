import { useState } from "react";
import { motion, useMotionValue, useTransform } from "motion/react";

export default function Toggle() {
  const [on, setOn] = useState<boolean>(false);
  const x = useMotionValue(0);
  const opacity = useTransform(x, [-100, 0, 100], [0, 1, 0]);
  return <div onClick={() => setOn(!on)} className={`flex w-20 ${on ? "justify-end" : "justify-start"}`}>
    <motion.div layout className="h-8 w-8 bg-gray-400" style={{ x, opacity }} />
  </div>;
}
