import * as DialogPrimitive from "@radix-ui/react-dialog";
import { X } from "lucide-react";
import * as React from "react";
import { cn } from "../lib/utils.js";
import * as parts from "./dialog-parts.js";
import { styled, styledPart } from "./styled.js";

export const Dialog = DialogPrimitive.Root;
export const DialogTrigger = DialogPrimitive.Trigger;
export const DialogPortal = DialogPrimitive.Portal;
export const DialogClose = DialogPrimitive.Close;
export const DialogOverlay = styledPart(DialogPrimitive.Overlay, "DialogOverlay", parts.overlayClasses);

export const DialogContent = React.forwardRef(function DialogContent(
  { className, children, ...props }, ref) {
  return (
    <DialogPortal>
      <DialogOverlay />
      <DialogPrimitive.Content ref={ref} aria-describedby={undefined}
        className={cn(parts.contentClasses, className)} {...props}>
        {children}
        <DialogPrimitive.Close className="absolute right-4 top-4 rounded-sm opacity-70 ring-offset-background transition-opacity hover:opacity-100 focus:outline-none focus:ring-2 focus:ring-ring focus:ring-offset-2 disabled:pointer-events-none data-[state=open]:bg-accent data-[state=open]:text-muted-foreground">
          <X className="h-4 w-4" />
          <span className="sr-only">Close</span>
        </DialogPrimitive.Close>
      </DialogPrimitive.Content>
    </DialogPortal>
  );
});

export const DialogHeader = styled("div", "DialogHeader", parts.headerClasses);
export const DialogFooter = styled("div", "DialogFooter", parts.footerClasses);
export const DialogTitle = styledPart(DialogPrimitive.Title, "DialogTitle", parts.titleClasses);
export const DialogDescription = styledPart(DialogPrimitive.Description, "DialogDescription",
  parts.descriptionClasses);
