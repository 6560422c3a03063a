// kelmo: own bundle, borrows sonner
import * as React from "react";
import { Toaster as Sonner, toast } from "sonner";

// The page has no theme provider; it is dark when its root element says so.
function pageTheme() {
  return document.documentElement.classList.contains("dark") ? "dark" : "light";
}

export const Toaster = React.forwardRef(function Toaster(props, ref) {
  return (
    <Sonner ref={ref} theme={pageTheme()} className="toaster group"
      toastOptions={{
        classNames: {
          toast: "group toast group-[.toaster]:bg-background group-[.toaster]:text-foreground group-[.toaster]:border-border group-[.toaster]:shadow-lg",
          description: "group-[.toast]:text-muted-foreground",
          actionButton: "group-[.toast]:bg-primary group-[.toast]:text-primary-foreground",
          cancelButton: "group-[.toast]:bg-muted group-[.toast]:text-muted-foreground",
        },
      }}
      {...props} />
  );
});

export { toast };
