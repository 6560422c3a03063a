import { useEffect, useState } from "react";
import { Transport, Synth, Loop, now } from "tone";

export default function Sequencer() {
  const [bpm, setBpm] = useState<number>(120);
  useEffect(() => { Transport.bpm.value = bpm; }, [bpm]);
  const steps: boolean[] = Array(16).fill(false).map((_, i) => i % 4 === 0);
  return (
    <div className="p-6">
      <input type="range" min={60} max={180} value={bpm} onChange={(e) => setBpm(Number(e.target.value))} />
      <span className="ml-2">{bpm} BPM</span>
      <div className="mt-3 grid grid-cols-8 gap-1 md:grid-cols-16">
        {steps.map((on, i) => <div key={i} className={`h-8 rounded ${on ? "bg-emerald-500" : "bg-gray-200"}`} />)}
      </div>
      <p className="text-xs text-gray-400">{typeof Synth === "function" && typeof Loop === "function" && typeof now === "function" ? "engine ready" : "missing"}</p>
    </div>
  );
}
