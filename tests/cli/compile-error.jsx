export default function Broken() {
  return <p>unclosed;
}
