import * as AlertDialogPrimitive from "@radix-ui/react-alert-dialog";
import * as React from "react";
import { cn } from "../lib/utils.js";
import { buttonVariants } from "./button.jsx";
import * as parts from "./dialog-parts.js";
import { styled, styledPart } from "./styled.js";

export const AlertDialog = AlertDialogPrimitive.Root;
export const AlertDialogTrigger = AlertDialogPrimitive.Trigger;
export const AlertDialogPortal = AlertDialogPrimitive.Portal;
export const AlertDialogOverlay = styledPart(AlertDialogPrimitive.Overlay, "AlertDialogOverlay",
  parts.overlayClasses);

export const AlertDialogContent = React.forwardRef(function AlertDialogContent(
  { className, ...props }, ref) {
  return (
    <AlertDialogPortal>
      <AlertDialogOverlay />
      <AlertDialogPrimitive.Content ref={ref} className={cn(parts.contentClasses, className)}
        {...props} />
    </AlertDialogPortal>
  );
});

export const AlertDialogHeader = styled("div", "AlertDialogHeader",
  "flex flex-col space-y-2 text-center sm:text-left");
export const AlertDialogFooter = styled("div", "AlertDialogFooter", parts.footerClasses);
export const AlertDialogTitle = styledPart(AlertDialogPrimitive.Title, "AlertDialogTitle",
  "text-lg font-semibold");
export const AlertDialogDescription = styledPart(AlertDialogPrimitive.Description,
  "AlertDialogDescription", parts.descriptionClasses);
export const AlertDialogAction = styledPart(AlertDialogPrimitive.Action, "AlertDialogAction",
  buttonVariants());
export const AlertDialogCancel = styledPart(AlertDialogPrimitive.Cancel, "AlertDialogCancel",
  cn(buttonVariants({ variant: "outline" }), "mt-2 sm:mt-0"));
