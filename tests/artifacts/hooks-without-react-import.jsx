const { useState, useEffect, useMemo, useRef } = React;

function Timer() {
  const [seconds, setSeconds] = useState(0);
  const started = useRef(Date.now());
  useEffect(() => { const id = setInterval(() => setSeconds((s) => s + 1), 1000); return () => clearInterval(id); }, []);
  const label = useMemo(() => `${Math.floor(seconds / 60)}:${String(seconds % 60).padStart(2, "0")}`, [seconds]);
  return <div className="p-6 font-mono text-4xl" data-started={started.current}>{label}</div>;
}

export default Timer;
