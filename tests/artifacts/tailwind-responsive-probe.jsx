import { useState } from "react";

export default function Probe() {
  const [extra, setExtra] = useState(false);
  return <div id="layout" className="flex flex-col md:flex-row gap-4">
    <aside id="side" className="w-full md:w-64 flex-shrink-0 bg-blue-500 text-white p-4 rounded-lg hover:bg-blue-700 focus:ring-2 active:bg-blue-800">Sidebar</aside>
    <main className="flex-1 bg-gray-100 p-4">
      <div id="arbitrary" className="w-[350px] h-[42px] bg-[#ff6600] text-[13px]" />
      <div id="overlay" className="bg-black bg-opacity-50 text-white text-opacity-75 p-2">Overlay</div>
      <p className="group bg-gradient-to-br from-indigo-500 via-purple-500 to-pink-500 text-white/80 ring-1 ring-white/20 backdrop-blur-sm dark:bg-zinc-900 sm:text-5xl lg:grid-cols-4 hover:-translate-y-0.5 focus:ring-white/50"><span className="group-hover:text-indigo-600">Variety</span></p>
      <button id="grow" onClick={() => setExtra(true)} className="mt-2 rounded border px-2">More</button>
      {extra && <p id="late" className={["mt-2", "text-" + "emerald" + "-600", "tracking-[0.3em]"].join(" ")}>Built at run time</p>}
    </main>
  </div>;
}
