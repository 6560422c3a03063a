import * as SeparatorPrimitive from "@radix-ui/react-separator";
import * as React from "react";
import { cn } from "../lib/utils.js";

export const Separator = React.forwardRef(function Separator(
  { className, orientation = "horizontal", decorative = true, ...props }, ref) {
  return <SeparatorPrimitive.Root ref={ref} decorative={decorative} orientation={orientation}
    className={cn("shrink-0 bg-border",
      orientation === "horizontal" ? "h-[1px] w-full" : "h-full w-[1px]", className)}
    {...props} />;
});
