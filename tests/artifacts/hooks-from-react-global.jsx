// No imports at all: hooks reached through React's global, the way many artifacts do.
const { useState, useMemo } = React;

function Counter() {
  const [n, setN] = useState(0);
  React.useEffect(() => { document.title = `Count ${n}`; }, [n]);
  const label = useMemo(() => `Clicked ${n}`, [n]);
  return <button onClick={() => setN(n + 1)}>{label}</button>;
}

export default Counter;
