export default function Landing() {
  const features = ["Fast", "Offline", "Private", "Native"];
  return (
    <div className="min-h-screen bg-gradient-to-br from-indigo-500 via-purple-500 to-pink-500 text-white">
      <nav className="flex items-center justify-between px-4 py-4 md:px-12">
        <span className="text-2xl font-extrabold tracking-tight">Acme</span>
        <div className="hidden space-x-6 md:flex"><a href="#" className="hover:underline">Docs</a><a href="#" className="hover:underline">Pricing</a></div>
      </nav>
      <section className="mx-auto max-w-5xl px-4 py-20 text-center">
        <h1 className="text-4xl font-black leading-tight sm:text-5xl lg:text-6xl">Build faster <span className="text-yellow-300">today</span></h1>
        <p className="mx-auto mt-6 max-w-2xl text-lg text-white/80">Everything you need, nothing you don't.</p>
        <div className="mt-10 flex flex-col justify-center gap-4 sm:flex-row">
          <button className="rounded-full bg-white px-8 py-3 font-semibold text-indigo-600 shadow-lg transition hover:scale-105 hover:shadow-xl focus:outline-none focus:ring-4 focus:ring-white/50">Get started</button>
          <button className="rounded-full border-2 border-white px-8 py-3 font-semibold hover:bg-white hover:text-indigo-600">Learn more</button>
        </div>
      </section>
      <section className="grid grid-cols-1 gap-6 px-4 pb-20 sm:grid-cols-2 md:px-12 lg:grid-cols-4">
        {features.map((f) => <div key={f} className="rounded-2xl bg-white bg-opacity-10 p-6 backdrop-blur-sm ring-1 ring-white/20 hover:bg-opacity-20"><h3 className="text-xl font-bold">{f}</h3></div>)}
      </section>
    </div>
  );
}
