// No imports at all: hooks reached through React's global, the way many artifacts do.
export default function Counter() {
  const [n, setN] = React.useState(0);
  React.useEffect(() => { document.title = `Count ${n}`; }, [n]);
  return <button onClick={() => setN(n + 1)}>Clicked {n}</button>;
}
