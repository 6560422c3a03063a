import { chunk } from "lodahs";

export default function Broken() {
  return <p>{chunk([1, 2], 1).length}</p>;
}
