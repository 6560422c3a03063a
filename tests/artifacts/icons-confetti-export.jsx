import React, { useEffect } from "react";
import { FaBeer } from "react-icons/fa";
import { FiSettings } from "react-icons/fi";
import { MdHome } from "react-icons/md";
import { BeakerIcon } from "@heroicons/react/24/outline";
import { CheckIcon } from "@heroicons/react/20/solid";
import confetti from "canvas-confetti";
import Confetti from "react-confetti";
import { useSpring, animated } from "@react-spring/web";
import { Toaster, toast } from "sonner";
import { jsPDF } from "jspdf";
import html2canvas from "html2canvas";
import { toPng } from "html-to-image";

export default function Party() {
  const style = useSpring({ from: { opacity: 0 }, to: { opacity: 1 } });
  useEffect(() => { toast("Saved"); }, []);
  const exporters = [typeof jsPDF, typeof html2canvas, typeof toPng, typeof confetti].join(" ");
  return (
    <div className="p-4">
      <Confetti width={200} height={100} numberOfPieces={10} recycle={false} />
      <animated.div style={style} id="icons"><FaBeer /><FiSettings /><MdHome /><BeakerIcon className="h-6 w-6" /><CheckIcon className="h-5 w-5" /></animated.div>
      <p id="exporters">{exporters}</p>
      <Toaster />
    </div>
  );
}
