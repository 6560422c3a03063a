import * as HoverCardPrimitive from "@radix-ui/react-hover-card";
import * as React from "react";
import { cn } from "../lib/utils.js";

export const HoverCard = HoverCardPrimitive.Root;
export const HoverCardTrigger = HoverCardPrimitive.Trigger;

export const HoverCardContent = React.forwardRef(function HoverCardContent(
  { className, align = "center", sideOffset = 4, ...props }, ref) {
  return <HoverCardPrimitive.Content ref={ref} align={align} sideOffset={sideOffset}
    className={cn("z-50 w-64 rounded-md border bg-popover p-4 text-popover-foreground shadow-md outline-none data-[state=open]:animate-in", className)}
    {...props} />;
});
