import { useState } from "react";
import { motion, useMotionValue, useTransform } from "motion/react";

export default function Toggle() {
  const [on, setOn] = useState<boolean>(false);
  const x = useMotionValue(0);
  const opacity = useTransform(x, [-100, 0, 100], [0, 1, 0]);
  return (
    <div className="flex h-screen items-center justify-center">
      <div onClick={() => setOn(!on)} className={`flex h-10 w-20 cursor-pointer rounded-full p-1 ${on ? "justify-end bg-green-400" : "justify-start bg-gray-300"}`}>
        <motion.div layout className="h-8 w-8 rounded-full bg-white shadow" style={{ x, opacity }} />
      </div>
    </div>
  );
}
