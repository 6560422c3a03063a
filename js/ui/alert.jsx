import { cva } from "class-variance-authority";
import * as React from "react";
import { cn } from "../lib/utils.js";
import { styled } from "./styled.js";

const alertVariants = cva(
  "relative w-full rounded-lg border p-4 [&>svg~*]:pl-7 [&>svg+div]:translate-y-[-3px] [&>svg]:absolute [&>svg]:left-4 [&>svg]:top-4 [&>svg]:text-foreground",
  {
    variants: {
      variant: {
        default: "bg-background text-foreground",
        destructive: "border-destructive/50 text-destructive dark:border-destructive [&>svg]:text-destructive",
      },
    },
    defaultVariants: { variant: "default" },
  },
);

export const Alert = React.forwardRef(function Alert({ className, variant, ...props }, ref) {
  return <div ref={ref} role="alert" className={cn(alertVariants({ variant }), className)} {...props} />;
});

export const AlertTitle = styled("h5", "AlertTitle", "mb-1 font-medium leading-none tracking-tight");
export const AlertDescription = styled("div", "AlertDescription", "text-sm [&_p]:leading-relaxed");
