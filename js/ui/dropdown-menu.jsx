import * as MenuPrimitive from "@radix-ui/react-dropdown-menu";
import { Check, ChevronRight, Circle } from "lucide-react";
import * as React from "react";
import { cn } from "../lib/utils.js";
import { styledPart } from "./styled.js";

export const DropdownMenu = MenuPrimitive.Root;
export const DropdownMenuTrigger = MenuPrimitive.Trigger;
export const DropdownMenuGroup = MenuPrimitive.Group;
export const DropdownMenuPortal = MenuPrimitive.Portal;
export const DropdownMenuSub = MenuPrimitive.Sub;
export const DropdownMenuRadioGroup = MenuPrimitive.RadioGroup;

const menuSurface =
  "z-50 min-w-[8rem] overflow-hidden rounded-md border bg-popover p-1 text-popover-foreground shadow-md data-[state=open]:animate-in";
const itemBase =
  "relative flex cursor-default select-none items-center rounded-sm text-sm outline-none transition-colors focus:bg-accent focus:text-accent-foreground data-[disabled]:pointer-events-none data-[disabled]:opacity-50";

export const DropdownMenuSubTrigger = React.forwardRef(function DropdownMenuSubTrigger(
  { className, inset, children, ...props }, ref) {
  return (
    <MenuPrimitive.SubTrigger ref={ref}
      className={cn("flex cursor-default select-none items-center gap-2 rounded-sm px-2 py-1.5 text-sm outline-none focus:bg-accent data-[state=open]:bg-accent", inset && "pl-8", className)}
      {...props}>
      {children}
      <ChevronRight className="ml-auto h-4 w-4" />
    </MenuPrimitive.SubTrigger>
  );
});

export const DropdownMenuSubContent = styledPart(MenuPrimitive.SubContent, "DropdownMenuSubContent",
  cn(menuSurface, "shadow-lg"));

export const DropdownMenuContent = React.forwardRef(function DropdownMenuContent(
  { className, sideOffset = 4, ...props }, ref) {
  return (
    <MenuPrimitive.Portal>
      <MenuPrimitive.Content ref={ref} sideOffset={sideOffset} className={cn(menuSurface, className)}
        {...props} />
    </MenuPrimitive.Portal>
  );
});

export const DropdownMenuItem = React.forwardRef(function DropdownMenuItem(
  { className, inset, ...props }, ref) {
  return <MenuPrimitive.Item ref={ref}
    className={cn(itemBase, "gap-2 px-2 py-1.5 [&_svg]:size-4 [&_svg]:shrink-0", inset && "pl-8", className)}
    {...props} />;
});

export const DropdownMenuCheckboxItem = React.forwardRef(function DropdownMenuCheckboxItem(
  { className, children, checked, ...props }, ref) {
  return (
    <MenuPrimitive.CheckboxItem ref={ref} checked={checked}
      className={cn(itemBase, "py-1.5 pl-8 pr-2", className)} {...props}>
      <span className="absolute left-2 flex h-3.5 w-3.5 items-center justify-center">
        <MenuPrimitive.ItemIndicator><Check className="h-4 w-4" /></MenuPrimitive.ItemIndicator>
      </span>
      {children}
    </MenuPrimitive.CheckboxItem>
  );
});

export const DropdownMenuRadioItem = React.forwardRef(function DropdownMenuRadioItem(
  { className, children, ...props }, ref) {
  return (
    <MenuPrimitive.RadioItem ref={ref} className={cn(itemBase, "py-1.5 pl-8 pr-2", className)} {...props}>
      <span className="absolute left-2 flex h-3.5 w-3.5 items-center justify-center">
        <MenuPrimitive.ItemIndicator><Circle className="h-2 w-2 fill-current" /></MenuPrimitive.ItemIndicator>
      </span>
      {children}
    </MenuPrimitive.RadioItem>
  );
});

export const DropdownMenuLabel = React.forwardRef(function DropdownMenuLabel(
  { className, inset, ...props }, ref) {
  return <MenuPrimitive.Label ref={ref}
    className={cn("px-2 py-1.5 text-sm font-semibold", inset && "pl-8", className)} {...props} />;
});

export const DropdownMenuSeparator = styledPart(MenuPrimitive.Separator, "DropdownMenuSeparator",
  "-mx-1 my-1 h-px bg-muted");

export function DropdownMenuShortcut({ className, ...props }) {
  return <span className={cn("ml-auto text-xs tracking-widest opacity-60", className)} {...props} />;
}
