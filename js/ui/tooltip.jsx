import * as TooltipPrimitive from "@radix-ui/react-tooltip";
import * as React from "react";
import { cn } from "../lib/utils.js";

export const TooltipProvider = TooltipPrimitive.Provider;

// Brings its own provider, so a tooltip also works where the artifact forgot
// to wrap its tree in a TooltipProvider.
export function Tooltip(props) {
  return (
    <TooltipPrimitive.Provider delayDuration={props.delayDuration}>
      <TooltipPrimitive.Root {...props} />
    </TooltipPrimitive.Provider>
  );
}

export const TooltipTrigger = TooltipPrimitive.Trigger;

export const TooltipContent = React.forwardRef(function TooltipContent(
  { className, sideOffset = 4, ...props }, ref) {
  return (
    <TooltipPrimitive.Portal>
      <TooltipPrimitive.Content ref={ref} sideOffset={sideOffset}
        className={cn("z-50 overflow-hidden rounded-md border bg-popover px-3 py-1.5 text-sm text-popover-foreground shadow-md animate-in", className)}
        {...props} />
    </TooltipPrimitive.Portal>
  );
});
