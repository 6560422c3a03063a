import { useEffect, useState } from "react";
import { Transport, Synth, Loop, now } from "tone";

export default function Sequencer() {
  const [bpm, setBpm] = useState<number>(120);
  useEffect(() => { Transport.bpm.value = bpm; }, [bpm]);
  return <div>
    <input type="range" min={60} max={180} value={bpm} onChange={(e) => setBpm(Number(e.target.value))} /> {bpm} BPM
    <p>{typeof Synth === "function" && typeof Loop === "function" && typeof now === "function" ? "engine ready" : "missing"}</p>
  </div>;
}
