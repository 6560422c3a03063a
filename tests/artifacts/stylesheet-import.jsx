import "bootstrap/dist/css/bootstrap.min.css";
import "./App.css";
import { Sparkles } from "lucide-react";

export default function Styled() {
  return <p><Sparkles className="text-yellow-500" /> Stylesheet imports are accepted.</p>;
}
