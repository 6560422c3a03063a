// A plain element with default classes, merged with the caller's className.
import * as React from "react";
import { cn } from "../lib/utils.js";

export function styled(Tag, displayName, classes) {
  const Component = React.forwardRef(function StyledElement({ className, ...props }, ref) {
    return React.createElement(Tag, { ref, className: cn(classes, className), ...props });
  });
  Component.displayName = displayName;
  return Component;
}

// A Radix part with default classes.
export function styledPart(Part, displayName, classes) {
  const Component = React.forwardRef(function StyledPart({ className, ...props }, ref) {
    return React.createElement(Part, { ref, className: cn(classes, className), ...props });
  });
  Component.displayName = displayName;
  return Component;
}
