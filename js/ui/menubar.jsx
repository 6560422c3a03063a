import * as MenubarPrimitive from "@radix-ui/react-menubar";
import * as React from "react";
import { cn } from "../lib/utils.js";
import { menuParts, surfaceClasses } from "./menu-parts.js";
import { styledPart } from "./styled.js";

export const MenubarMenu = MenubarPrimitive.Menu;
export const MenubarGroup = MenubarPrimitive.Group;
export const MenubarPortal = MenubarPrimitive.Portal;
export const MenubarSub = MenubarPrimitive.Sub;
export const MenubarRadioGroup = MenubarPrimitive.RadioGroup;

export const Menubar = styledPart(MenubarPrimitive.Root, "Menubar",
  "flex h-10 items-center space-x-1 rounded-md border bg-background p-1 shadow-sm");

export const MenubarTrigger = styledPart(MenubarPrimitive.Trigger, "MenubarTrigger",
  "flex cursor-default select-none items-center rounded-sm px-3 py-1.5 text-sm font-medium outline-none focus:bg-accent focus:text-accent-foreground data-[state=open]:bg-accent data-[state=open]:text-accent-foreground");

export const MenubarContent = React.forwardRef(function MenubarContent(
  { className, align = "start", alignOffset = -4, sideOffset = 8, ...props }, ref) {
  return (
    <MenubarPrimitive.Portal>
      <MenubarPrimitive.Content ref={ref} align={align} alignOffset={alignOffset} sideOffset={sideOffset}
        className={cn(surfaceClasses, "min-w-[12rem]", className)} {...props} />
    </MenubarPrimitive.Portal>
  );
});

const parts = menuParts(MenubarPrimitive, "Menubar");
export const MenubarSubTrigger = parts.SubTrigger;
export const MenubarSubContent = parts.SubContent;
export const MenubarItem = parts.Item;
export const MenubarCheckboxItem = parts.CheckboxItem;
export const MenubarRadioItem = parts.RadioItem;
export const MenubarLabel = parts.Label;
export const MenubarSeparator = parts.Separator;
export const MenubarShortcut = parts.Shortcut;
