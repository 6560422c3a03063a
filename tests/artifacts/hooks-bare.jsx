// No imports at all: hooks reached through React's global, the way many artifacts do.
export default function Counter() {
  const [n, setN] = React.useState(0);
  React.useEffect(() => { document.title = `Count ${n}`; }, [n]);
  return <button className="m-6 rounded bg-teal-500 px-4 py-2 text-white" onClick={() => setN(n + 1)}>Clicked {n}</button>;
}
