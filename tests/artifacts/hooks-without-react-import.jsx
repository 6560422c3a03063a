const { useState, useEffect, useMemo, useRef } = React;

function Timer() {
  const [seconds, setSeconds] = useState(0);
  const started = useRef(Date.now());
  useEffect(() => { const id = setInterval(() => setSeconds((s) => s + 1), 1000); return () => clearInterval(id); }, []);
  const label = useMemo(() => `${seconds}s`, [seconds]);
  return <div data-started={started.current}>{label}</div>;
}

export default Timer;
