// kelmo: own bundle
import { OTPInput, OTPInputContext } from "input-otp";
import { Minus } from "lucide-react";
import * as React from "react";
import { cn } from "../lib/utils.js";
import { addPageStyle } from "./theme-variables.js";

export { REGEXP_ONLY_CHARS, REGEXP_ONLY_DIGITS, REGEXP_ONLY_DIGITS_AND_CHARS } from "input-otp";

export const InputOTP = React.forwardRef(function InputOTP({ className, containerClassName, ...props }, ref) {
  addPageStyle("kelmo-caret-blink",
    "@keyframes kelmo-caret-blink { 0%, 70%, 100% { opacity: 1; } 20%, 50% { opacity: 0; } }");
  return <OTPInput ref={ref}
    containerClassName={cn("flex items-center gap-2 [&:has(:disabled)]:opacity-50", containerClassName)}
    className={cn("disabled:cursor-not-allowed", className)} {...props} />;
});

export const InputOTPGroup = React.forwardRef(function InputOTPGroup({ className, ...props }, ref) {
  return <div ref={ref} className={cn("flex items-center", className)} {...props} />;
});

export const InputOTPSlot = React.forwardRef(function InputOTPSlot({ index, className, ...props }, ref) {
  const { char, hasFakeCaret, isActive } = React.useContext(OTPInputContext).slots[index] ?? {};
  return (
    <div ref={ref} data-slot="input-otp-slot" data-active={isActive || undefined}
      className={cn("relative flex h-10 w-10 items-center justify-center border-y border-r border-input text-sm transition-all first:rounded-l-md first:border-l last:rounded-r-md",
        isActive && "z-10 ring-2 ring-ring ring-offset-background", className)}
      {...props}>
      {char}
      {hasFakeCaret && (
        <div className="pointer-events-none absolute inset-0 flex items-center justify-center">
          <div className="h-4 w-px bg-foreground" style={{ animation: "kelmo-caret-blink 1.25s ease-out infinite" }} />
        </div>
      )}
    </div>
  );
});

export const InputOTPSeparator = React.forwardRef(function InputOTPSeparator(props, ref) {
  return <div ref={ref} role="separator" {...props}><Minus /></div>;
});
