// The toasts of shadcn/ui's <Toaster />: a store outside React, so that toast()
// works from anywhere, also outside components; each useToast() follows it.
import * as React from "react";

const limit = 1;
// A closed toast stays listed while it animates out.
const removeDelay = 1000;

let state = { toasts: [] };
const listeners = new Set();
const removals = new Map();
let lastId = 0;

export function reducer(current, action) {
  switch (action.type) {
    case "ADD_TOAST":
      return { ...current, toasts: [action.toast, ...current.toasts].slice(0, limit) };
    case "UPDATE_TOAST":
      return {
        ...current,
        toasts: current.toasts.map((t) => (t.id === action.toast.id ? { ...t, ...action.toast } : t)),
      };
    case "DISMISS_TOAST": {
      const closing = (t) => action.toastId === undefined || t.id === action.toastId;
      return { ...current, toasts: current.toasts.map((t) => (closing(t) ? { ...t, open: false } : t)) };
    }
    case "REMOVE_TOAST":
      return {
        ...current,
        toasts: action.toastId === undefined ? [] : current.toasts.filter((t) => t.id !== action.toastId),
      };
    default:
      return current;
  }
}

function dispatch(action) {
  if (action.type === "DISMISS_TOAST")
    for (const t of state.toasts)
      if (action.toastId === undefined || t.id === action.toastId)
        scheduleRemoval(t.id);
  state = reducer(state, action);
  for (const listener of listeners)
    listener(state);
}

function scheduleRemoval(id) {
  if (removals.has(id))
    return;
  removals.set(id, setTimeout(() => {
    removals.delete(id);
    dispatch({ type: "REMOVE_TOAST", toastId: id });
  }, removeDelay));
}

export function toast(props = {}) {
  lastId = (lastId + 1) % Number.MAX_SAFE_INTEGER;
  const id = String(lastId);
  const dismiss = () => dispatch({ type: "DISMISS_TOAST", toastId: id });
  const update = (next) => dispatch({ type: "UPDATE_TOAST", toast: { ...next, id } });
  dispatch({
    type: "ADD_TOAST",
    toast: {
      ...props,
      id,
      open: true,
      onOpenChange: (open) => {
        if (!open)
          dismiss();
      },
    },
  });
  return { id, dismiss, update };
}

export function useToast() {
  const [current, setCurrent] = React.useState(state);
  React.useEffect(() => {
    listeners.add(setCurrent);
    setCurrent(state); // a toast may have come between the render and this effect
    return () => listeners.delete(setCurrent);
  }, []);
  return {
    ...current,
    toast,
    dismiss: (toastId) => dispatch({ type: "DISMISS_TOAST", toastId }),
  };
}
