import React, { useState } from 'react';
import { motion, AnimatePresence } from 'framer-motion';

export default function AnimatedList() {
  const [items, setItems] = useState([1, 2, 3]);
  return (
    <div className="p-8">
      <button onClick={() => setItems([...items, items.length + 1])} className="mb-4 rounded-lg bg-indigo-600 px-4 py-2 text-white">Add</button>
      <ul className="space-y-2">
        <AnimatePresence>
          {items.map(i => (
            <motion.li key={i} initial={{ opacity: 0, x: -20 }} animate={{ opacity: 1, x: 0 }} exit={{ opacity: 0 }}
              whileHover={{ scale: 1.02 }} className="rounded-lg bg-white p-4 shadow">Item {i}</motion.li>
          ))}
        </AnimatePresence>
      </ul>
    </div>
  );
}
