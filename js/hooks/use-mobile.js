import * as React from "react";

const mobileBreakpoint = 768;

// Whether the page is narrower than Tailwind's md: breakpoint.
export function useIsMobile() {
  const query = `(max-width: ${mobileBreakpoint - 1}px)`;
  const [isMobile, setIsMobile] = React.useState(() => window.matchMedia(query).matches);
  React.useEffect(() => {
    const list = window.matchMedia(query);
    const onChange = () => setIsMobile(list.matches);
    list.addEventListener("change", onChange);
    onChange();
    return () => list.removeEventListener("change", onChange);
  }, [query]);
  return isMobile;
}
