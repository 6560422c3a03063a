import * as NavigationMenuPrimitive from "@radix-ui/react-navigation-menu";
import { cva } from "class-variance-authority";
import { ChevronDown } from "lucide-react";
import * as React from "react";
import { cn } from "../lib/utils.js";
import { styledPart } from "./styled.js";

export const NavigationMenuItem = NavigationMenuPrimitive.Item;
export const NavigationMenuLink = NavigationMenuPrimitive.Link;

export const NavigationMenuViewport = React.forwardRef(function NavigationMenuViewport(
  { className, ...props }, ref) {
  return (
    <div className="absolute left-0 top-full flex justify-center">
      <NavigationMenuPrimitive.Viewport ref={ref}
        className={cn("relative mt-1.5 h-[var(--radix-navigation-menu-viewport-height)] w-full origin-top overflow-hidden rounded-md border bg-popover text-popover-foreground shadow-lg transition-[width,height] data-[state=open]:animate-in md:w-[var(--radix-navigation-menu-viewport-width)]", className)}
        {...props} />
    </div>
  );
});

export const NavigationMenu = React.forwardRef(function NavigationMenu(
  { className, children, ...props }, ref) {
  return (
    <NavigationMenuPrimitive.Root ref={ref}
      className={cn("relative z-10 flex max-w-max flex-1 items-center justify-center", className)} {...props}>
      {children}
      <NavigationMenuViewport />
    </NavigationMenuPrimitive.Root>
  );
});

export const NavigationMenuList = styledPart(NavigationMenuPrimitive.List, "NavigationMenuList",
  "group flex flex-1 list-none items-center justify-center space-x-1");

export const navigationMenuTriggerStyle = cva(
  "group inline-flex h-10 w-max items-center justify-center rounded-md bg-background px-4 py-2 text-sm font-medium transition-colors hover:bg-accent hover:text-accent-foreground focus:bg-accent focus:text-accent-foreground focus:outline-none disabled:pointer-events-none disabled:opacity-50 data-[active]:bg-accent/50 data-[state=open]:bg-accent/50",
);

export const NavigationMenuTrigger = React.forwardRef(function NavigationMenuTrigger(
  { className, children, ...props }, ref) {
  return (
    <NavigationMenuPrimitive.Trigger ref={ref} className={cn(navigationMenuTriggerStyle(), "group", className)}
      {...props}>
      {children}{" "}
      <ChevronDown aria-hidden="true"
        className="relative top-[1px] ml-1 h-3 w-3 transition duration-200 group-data-[state=open]:rotate-180" />
    </NavigationMenuPrimitive.Trigger>
  );
});

export const NavigationMenuContent = styledPart(NavigationMenuPrimitive.Content, "NavigationMenuContent",
  "left-0 top-0 w-full data-[motion^=from-]:animate-in md:absolute md:w-auto");

export const NavigationMenuIndicator = React.forwardRef(function NavigationMenuIndicator(
  { className, ...props }, ref) {
  return (
    <NavigationMenuPrimitive.Indicator ref={ref}
      className={cn("top-full z-[1] flex h-1.5 items-end justify-center overflow-hidden", className)} {...props}>
      <div className="relative top-[60%] h-2 w-2 rotate-45 rounded-tl-sm bg-border shadow-md" />
    </NavigationMenuPrimitive.Indicator>
  );
});
