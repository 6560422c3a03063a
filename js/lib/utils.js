// `cn`: joins class names the way clsx does, then lets later Tailwind classes
// override earlier ones of the same kind ("px-2 px-4" becomes "px-4").
import { clsx } from "clsx";
import { twMerge } from "tailwind-merge";

export function cn(...inputs) {
  return twMerge(clsx(inputs));
}
