export default function Landing() {
  return <div className="min-h-screen bg-gradient-to-br from-indigo-500 via-purple-500 to-pink-500 text-white">
    <nav className="hidden space-x-6 md:flex"><a href="#" className="hover:underline">Docs</a></nav>
    <h1 className="text-4xl font-black sm:text-5xl lg:text-6xl">Build faster <span className="text-yellow-300">today</span></h1>
    <p className="max-w-2xl text-white/80">Everything you need, nothing you don't.</p>
    <button className="rounded-full bg-white px-8 text-indigo-600 transition hover:scale-105 focus:outline-none focus:ring-4 focus:ring-white/50">Go</button>
    <section className="grid grid-cols-1 gap-6 sm:grid-cols-2 lg:grid-cols-4">
      {["Fast", "Offline"].map((f) => <div key={f} className="bg-white bg-opacity-10 ring-1 ring-white/20 backdrop-blur-sm hover:bg-opacity-20">{f}</div>)}
    </section>
  </div>;
}
