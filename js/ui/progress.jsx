import * as ProgressPrimitive from "@radix-ui/react-progress";
import * as React from "react";
import { cn } from "../lib/utils.js";

export const Progress = React.forwardRef(function Progress({ className, value, ...props }, ref) {
  return (
    <ProgressPrimitive.Root ref={ref} value={value}
      className={cn("relative h-4 w-full overflow-hidden rounded-full bg-secondary", className)} {...props}>
      <ProgressPrimitive.Indicator className="h-full w-full flex-1 bg-primary transition-all"
        style={{ transform: `translateX(-${100 - (value || 0)}%)` }} />
    </ProgressPrimitive.Root>
  );
});
