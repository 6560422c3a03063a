import React, { useEffect, useState } from "react";
import { Heart, Star } from "lucide-react";
import { BarChart, Bar, XAxis } from "recharts";
import { Button } from "@/components/ui/button";
import "katex/dist/katex.min.css";

export default function Board() {
  const [visits, setVisits] = useState("");
  useEffect(() => {
    window.storage.get("visits").then((before) => {
      const count = before ? Number(before.value) + 1 : 1;
      return window.storage.set("visits", String(count)).then(() => setVisits(String(count)));
    });
  }, []);
  return (
    <div className="p-6 space-y-4 bg-sky-100">
      <h1 id="title" className="text-2xl md:text-3xl font-bold text-sky-900 hover:text-sky-700">Exported <Heart className="inline" /><Star className="inline" /></h1>
      <BarChart width={300} height={120} data={[{ n: "a", v: 3 }, { n: "b", v: 5 }]}><XAxis dataKey="n" /><Bar dataKey="v" fill="#0ea5e9" isAnimationActive={false} /></BarChart>
      <Button id="button">Save</Button>
      <p id="visits">{visits}</p>
    </div>
  );
}
