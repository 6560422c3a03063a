// A typed task board: interfaces, a type alias, an enum, a generic component and `as`.
import React, { useMemo, useState } from "react";

enum Status {
  Todo = "todo",
  Doing = "doing",
  Done = "done",
}

interface Task {
  id: number;
  title: string;
  status: Status;
}

type Column<T> = { key: Status; title: string; items: T[] };

interface ListProps<T> {
  items: T[];
  render: (item: T) => React.ReactNode;
  empty: string;
}

function List<T extends { id: number }>({ items, render, empty }: ListProps<T>) {
  if (items.length === 0) return <p className="empty">{empty}</p>;
  return <ul>{items.map((item) => <li key={item.id}>{render(item)}</li>)}</ul>;
}

const initialTasks: Task[] = [
  { id: 1, title: "Sketch the idea", status: Status.Done },
  { id: 2, title: "Build the prototype", status: Status.Doing },
  { id: 3, title: "Show it to a friend", status: Status.Todo },
];

export default function TaskBoard() {
  const [tasks, setTasks] = useState<Task[]>(initialTasks);
  const columns = useMemo<Column<Task>[]>(
    () =>
      (Object.values(Status) as Status[]).map((key) => ({
        key,
        title: key[0].toUpperCase() + key.slice(1),
        items: tasks.filter((task) => task.status === key),
      })),
    [tasks],
  );

  const advance = (task: Task) => {
    const order = Object.values(Status) as Status[];
    const next = order[Math.min(order.indexOf(task.status) + 1, order.length - 1)];
    setTasks((all) => all.map((t) => (t.id === task.id ? { ...t, status: next } : t)));
  };

  return (
    <div className="board">
      <style>{css}</style>
      {columns.map((column) => (
        <section key={column.key} className="column" data-status={column.key}>
          <h2>
            {column.title} <span>{column.items.length}</span>
          </h2>
          <List
            items={column.items}
            empty="Nothing here"
            render={(task) => (
              <button onClick={() => advance(task)} title="Move on">
                {task.title}
              </button>
            )}
          />
        </section>
      ))}
    </div>
  );
}

const css = `
  .board { display: grid; grid-template-columns: repeat(3, 1fr); gap: 16px; align-items: start; padding: 24px;
           min-height: 100vh; box-sizing: border-box; background: #fffbf7;
           font-family: system-ui, sans-serif; color: #2d2015; }
  .column { background: white; border: 1px solid #ecdccd; border-radius: 14px; padding: 16px; }
  .column h2 { margin: 0 0 12px; font-size: 16px; }
  .column h2 span { color: #e8732a; }
  ul { list-style: none; margin: 0; padding: 0; display: grid; gap: 8px; }
  button { width: 100%; text-align: left; padding: 10px 12px; border-radius: 10px;
           border: 1px solid #f3c9a8; background: #fff3e8; cursor: pointer; font: inherit; }
  .empty { color: #8a7665; margin: 0; }
`;
