import React, { useState, useRef } from 'react';
import * as Tone from 'tone';
import { Play, Square } from 'lucide-react';

const notes = ['C4', 'D4', 'E4', 'F4', 'G4', 'A4', 'B4', 'C5'];

export default function Keyboard() {
  const synth = useRef(null);
  const [last, setLast] = useState(null);
  const [playing, setPlaying] = useState(false);
  const play = async (note) => {
    await Tone.start();
    if (!synth.current) synth.current = new Tone.PolySynth(Tone.Synth).toDestination();
    synth.current.triggerAttackRelease(note, '8n');
    setLast(note);
  };
  return (
    <div className="p-6">
      <div className="flex gap-1">
        {notes.map(n => <button key={n} onClick={() => play(n)} className="h-32 w-10 rounded-b border bg-white hover:bg-gray-100 active:bg-gray-200">{n}</button>)}
      </div>
      <button onClick={() => setPlaying(!playing)} className="mt-4 flex items-center gap-2 rounded bg-black px-3 py-1 text-white">
        {playing ? <Square size={14} /> : <Play size={14} />} {playing ? 'Stop' : 'Play'}
      </button>
      <p>Last: {last ?? '—'} · Tone {Tone.version}</p>
    </div>
  );
}
