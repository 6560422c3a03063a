import React, { useEffect, useState } from "react";
import * as Tone from "tone";
import { Transport, Synth, Loop, now } from "tone";

export default function Sequencer() {
  const [bpm, setBpm] = useState(120);
  useEffect(() => { Transport.bpm.value = bpm; }, [bpm]);
  const play = async () => { await Tone.start(); new Tone.PolySynth(Tone.Synth).toDestination().triggerAttackRelease("C4", "8n"); };
  return <div onClick={play}>
    <input type="range" min={60} max={180} value={bpm} onChange={(e) => setBpm(Number(e.target.value))} /> {bpm} BPM · Tone {Tone.version}
    <p>{typeof Synth === "function" && typeof Loop === "function" && typeof now === "function" ? "engine ready" : "missing"}</p>
  </div>;
}
