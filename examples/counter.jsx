// A small counter: hooks imported from React, JSX without importing React itself.
import { useState } from "react";

export default function Counter() {
  const [count, setCount] = useState(0);
  const mood = count === 0 ? "Ready when you are" : count < 5 ? "Warming up" : "On fire";

  return (
    <main style={styles.page}>
      <section style={styles.card}>
        <p style={styles.label}>{mood}</p>
        <h1 id="count" style={styles.count}>{count}</h1>
        <div style={styles.row}>
          <button style={styles.secondary} onClick={() => setCount((c) => Math.max(0, c - 1))}>
            −
          </button>
          <button id="increment" style={styles.primary} onClick={() => setCount((c) => c + 1)}>
            Add one
          </button>
        </div>
      </section>
    </main>
  );
}

const styles = {
  page: {
    minHeight: "100vh",
    display: "grid",
    placeItems: "center",
    background: "linear-gradient(160deg, #fffbf7, #fdebd9)",
    fontFamily: "system-ui, sans-serif",
    color: "#2d2015",
  },
  card: {
    padding: "32px 40px",
    borderRadius: 20,
    background: "white",
    boxShadow: "0 12px 32px rgba(45, 32, 21, 0.12)",
    textAlign: "center",
  },
  label: { margin: 0, color: "#8a7665", letterSpacing: 0.4 },
  count: { margin: "8px 0 20px", fontSize: 72, color: "#e8732a" },
  row: { display: "flex", gap: 12, justifyContent: "center" },
  primary: {
    padding: "10px 20px",
    border: 0,
    borderRadius: 10,
    background: "#e8732a",
    color: "white",
    fontSize: 16,
    cursor: "pointer",
  },
  secondary: {
    padding: "10px 16px",
    border: "1px solid #ecdccd",
    borderRadius: 10,
    background: "white",
    color: "#2d2015",
    fontSize: 16,
    cursor: "pointer",
  },
};
