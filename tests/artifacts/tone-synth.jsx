import React, { useState, useRef } from 'react';
import * as Tone from 'tone';
import { Play, Square } from 'lucide-react';

export default function Keyboard() {
  const synth = useRef(null);
  const [last, setLast] = useState(null);
  const play = async (note) => {
    await Tone.start();
    synth.current ??= new Tone.PolySynth(Tone.Synth).toDestination();
    synth.current.triggerAttackRelease(note, '8n');
    setLast(note);
  };
  return <div>
    {['C4', 'E4'].map((n) => <button key={n} onClick={() => play(n)}>{n}</button>)}
    {last ? <Square size={14} /> : <Play size={14} />} Last: {last ?? '—'} · Tone {Tone.version}
  </div>;
}
