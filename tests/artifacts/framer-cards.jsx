import React, { useState } from 'react';
import { motion, AnimatePresence } from 'framer-motion';

export default function AnimatedList() {
  const [items, setItems] = useState([1, 2]);
  return <ul onClick={() => setItems([...items, items.length + 1])}><AnimatePresence>
    {items.map((i) => <motion.li key={i} initial={{ opacity: 0, x: -20 }} animate={{ opacity: 1, x: 0 }}
      exit={{ opacity: 0 }} whileHover={{ scale: 1.02 }}>Item {i}</motion.li>)}
  </AnimatePresence></ul>;
}
