// The parts that the context menu and the menubar share: both are Radix menus
// with the same items, so one set of components is made per primitive.
import { Check, ChevronRight, Circle } from "lucide-react";
import * as React from "react";
import { cn } from "../lib/utils.js";
import { styledPart } from "./styled.js";

export const surfaceClasses =
  "z-50 min-w-[8rem] overflow-hidden rounded-md border bg-popover p-1 text-popover-foreground shadow-md data-[state=open]:animate-in";
export const itemClasses =
  "relative flex cursor-default select-none items-center rounded-sm text-sm outline-none focus:bg-accent focus:text-accent-foreground data-[disabled]:pointer-events-none data-[disabled]:opacity-50";

export function menuParts(Menu, name) {
  const named = (component, suffix) => {
    component.displayName = `${name}${suffix}`;
    return component;
  };

  const SubTrigger = named(React.forwardRef(function SubTrigger({ className, inset, children, ...props }, ref) {
    return (
      <Menu.SubTrigger ref={ref}
        className={cn(itemClasses, "px-2 py-1.5 data-[state=open]:bg-accent data-[state=open]:text-accent-foreground",
          inset && "pl-8", className)}
        {...props}>
        {children}
        <ChevronRight className="ml-auto h-4 w-4" />
      </Menu.SubTrigger>
    );
  }), "SubTrigger");

  const Item = named(React.forwardRef(function Item({ className, inset, ...props }, ref) {
    return <Menu.Item ref={ref}
      className={cn(itemClasses, "gap-2 px-2 py-1.5 [&_svg]:h-4 [&_svg]:w-4 [&_svg]:shrink-0", inset && "pl-8", className)}
      {...props} />;
  }), "Item");

  // Checkbox and radio items: the mark sits in the left padding.
  const indicated = (Primitive, mark, suffix) => named(React.forwardRef(function IndicatedItem(
    { className, children, ...props }, ref) {
    return (
      <Primitive ref={ref} className={cn(itemClasses, "py-1.5 pl-8 pr-2", className)} {...props}>
        <span className="absolute left-2 flex h-3.5 w-3.5 items-center justify-center">
          <Menu.ItemIndicator>{mark}</Menu.ItemIndicator>
        </span>
        {children}
      </Primitive>
    );
  }), suffix);

  const Label = named(React.forwardRef(function Label({ className, inset, ...props }, ref) {
    return <Menu.Label ref={ref}
      className={cn("px-2 py-1.5 text-sm font-semibold text-foreground", inset && "pl-8", className)} {...props} />;
  }), "Label");

  function Shortcut({ className, ...props }) {
    return <span className={cn("ml-auto text-xs tracking-widest text-muted-foreground", className)} {...props} />;
  }

  return {
    SubTrigger,
    SubContent: styledPart(Menu.SubContent, `${name}SubContent`, cn(surfaceClasses, "shadow-lg")),
    Item,
    CheckboxItem: indicated(Menu.CheckboxItem, <Check className="h-4 w-4" />, "CheckboxItem"),
    RadioItem: indicated(Menu.RadioItem, <Circle className="h-2 w-2 fill-current" />, "RadioItem"),
    Label,
    Separator: styledPart(Menu.Separator, `${name}Separator`, "-mx-1 my-1 h-px bg-border"),
    Shortcut: named(Shortcut, "Shortcut"),
  };
}
