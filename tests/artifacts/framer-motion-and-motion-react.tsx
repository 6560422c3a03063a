import { useState } from "react";
import { motion as m, AnimatePresence } from "framer-motion";
import { motion, useMotionValue, useTransform } from "motion/react";

export default function Toggle() {
  const [items, setItems] = useState<number[]>([1, 2]);
  const x = useMotionValue(0);
  const opacity = useTransform(x, [-100, 0, 100], [0, 1, 0]);
  return <ul onClick={() => setItems([...items, items.length + 1])}>
    <motion.div layout className="h-8 w-8 bg-gray-400" style={{ x, opacity }} />
    <AnimatePresence>{items.map((i) => <m.li key={i} initial={{ opacity: 0, x: -20 }} animate={{ opacity: 1, x: 0 }}
      exit={{ opacity: 0 }} whileHover={{ scale: 1.02 }}>Item {i}</m.li>)}</AnimatePresence>
  </ul>;
}
