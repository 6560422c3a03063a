import { Slot } from "@radix-ui/react-slot";
import { cva } from "class-variance-authority";
import { PanelLeft } from "lucide-react";
import * as React from "react";
import { useIsMobile } from "../hooks/use-mobile.js";
import { cn } from "../lib/utils.js";
import { Button } from "./button.jsx";
import { Input } from "./input.jsx";
import { Separator } from "./separator.jsx";
import { Sheet, SheetContent, SheetDescription, SheetHeader, SheetTitle } from "./sheet.jsx";
import { Skeleton } from "./skeleton.jsx";
import { Tooltip, TooltipContent, TooltipProvider, TooltipTrigger } from "./tooltip.jsx";

const width = "16rem";
const widthMobile = "18rem";
const widthIcon = "3rem";
const toggleKey = "b";

// The colours are the page theme's sidebar tokens (--sidebar-background …), named
// through their variables so that an artifact's own values for them apply.
const bg = "bg-[hsl(var(--sidebar-background))]";
const fg = "text-[hsl(var(--sidebar-foreground))]";
const accented =
  "hover:bg-[hsl(var(--sidebar-accent))] hover:text-[hsl(var(--sidebar-accent-foreground))] active:bg-[hsl(var(--sidebar-accent))] active:text-[hsl(var(--sidebar-accent-foreground))]";
const ring = "outline-none ring-[hsl(var(--sidebar-ring))] focus-visible:ring-2";

const SidebarContext = React.createContext(null);

export function useSidebar() {
  const context = React.useContext(SidebarContext);
  if (!context)
    throw new Error("useSidebar must be used within a SidebarProvider.");
  return context;
}

export const SidebarProvider = React.forwardRef(function SidebarProvider(
  { defaultOpen = true, open: openProp, onOpenChange, className, style, children, ...props }, ref) {
  const isMobile = useIsMobile();
  const [openMobile, setOpenMobile] = React.useState(false);
  const [ownOpen, setOwnOpen] = React.useState(defaultOpen);
  const open = openProp ?? ownOpen;
  const setOpen = React.useCallback((value) => {
    const next = typeof value === "function" ? value(open) : value;
    if (onOpenChange)
      onOpenChange(next);
    else
      setOwnOpen(next);
  }, [onOpenChange, open]);
  const toggleSidebar = React.useCallback(
    () => (isMobile ? setOpenMobile((shown) => !shown) : setOpen((shown) => !shown)),
    [isMobile, setOpen]);

  React.useEffect(() => {
    const onKeyDown = (event) => {
      if (event.key === toggleKey && (event.metaKey || event.ctrlKey)) {
        event.preventDefault();
        toggleSidebar();
      }
    };
    window.addEventListener("keydown", onKeyDown);
    return () => window.removeEventListener("keydown", onKeyDown);
  }, [toggleSidebar]);

  const state = open ? "expanded" : "collapsed";
  const context = React.useMemo(
    () => ({ state, open, setOpen, isMobile, openMobile, setOpenMobile, toggleSidebar }),
    [state, open, setOpen, isMobile, openMobile, toggleSidebar]);

  return (
    <SidebarContext.Provider value={context}>
      <TooltipProvider delayDuration={0}>
        <div ref={ref} style={{ "--sidebar-width": width, "--sidebar-width-icon": widthIcon, ...style }}
          className={cn("group/sidebar-wrapper flex min-h-screen w-full [&:has([data-variant=inset])]:bg-[hsl(var(--sidebar-background))]", className)}
          {...props}>
          {children}
        </div>
      </TooltipProvider>
    </SidebarContext.Provider>
  );
});

export const Sidebar = React.forwardRef(function Sidebar(
  { side = "left", variant = "sidebar", collapsible = "offcanvas", className, children, ...props }, ref) {
  const { isMobile, state, openMobile, setOpenMobile } = useSidebar();

  if (collapsible === "none") {
    return (
      <div ref={ref} className={cn("flex h-full w-[var(--sidebar-width)] flex-col", bg, fg, className)} {...props}>
        {children}
      </div>
    );
  }

  if (isMobile) {
    return (
      <Sheet open={openMobile} onOpenChange={setOpenMobile} {...props}>
        <SheetContent data-sidebar="sidebar" data-mobile="true" side={side}
          style={{ "--sidebar-width": widthMobile }}
          className={cn("w-[var(--sidebar-width)] p-0 [&>button]:hidden", bg, fg)}>
          <SheetHeader className="sr-only">
            <SheetTitle>Sidebar</SheetTitle>
            <SheetDescription>Displays the mobile sidebar.</SheetDescription>
          </SheetHeader>
          <div className="flex h-full w-full flex-col">{children}</div>
        </SheetContent>
      </Sheet>
    );
  }

  const inset = variant === "floating" || variant === "inset";
  return (
    <div ref={ref} className={cn("group peer hidden md:block", fg)} data-state={state}
      data-collapsible={state === "collapsed" ? collapsible : ""} data-variant={variant} data-side={side}>
      {/* Holds the sidebar's room in the page's flow; the sidebar itself is fixed. */}
      <div className={cn(
        "relative h-screen w-[var(--sidebar-width)] bg-transparent transition-[width] duration-200 ease-linear",
        "group-data-[collapsible=offcanvas]:w-0 group-data-[side=right]:rotate-180",
        inset
          ? "group-data-[collapsible=icon]:w-[calc(var(--sidebar-width-icon)+1rem)]"
          : "group-data-[collapsible=icon]:w-[var(--sidebar-width-icon)]")} />
      <div className={cn(
        "fixed inset-y-0 z-10 hidden h-screen w-[var(--sidebar-width)] transition-[left,right,width] duration-200 ease-linear md:flex",
        side === "left"
          ? "left-0 group-data-[collapsible=offcanvas]:left-[calc(var(--sidebar-width)*-1)]"
          : "right-0 group-data-[collapsible=offcanvas]:right-[calc(var(--sidebar-width)*-1)]",
        inset
          ? "p-2 group-data-[collapsible=icon]:w-[calc(var(--sidebar-width-icon)+1rem+2px)]"
          : "group-data-[collapsible=icon]:w-[var(--sidebar-width-icon)] group-data-[side=left]:border-r group-data-[side=right]:border-l",
        className)}
        {...props}>
        <div data-sidebar="sidebar"
          className={cn("flex h-full w-full flex-col group-data-[variant=floating]:rounded-lg group-data-[variant=floating]:border group-data-[variant=floating]:border-[hsl(var(--sidebar-border))] group-data-[variant=floating]:shadow", bg)}>
          {children}
        </div>
      </div>
    </div>
  );
});

export const SidebarTrigger = React.forwardRef(function SidebarTrigger({ className, onClick, ...props }, ref) {
  const { toggleSidebar } = useSidebar();
  return (
    <Button ref={ref} data-sidebar="trigger" variant="ghost" size="icon"
      className={cn("h-7 w-7 [&_svg]:h-4 [&_svg]:w-4", className)}
      onClick={(event) => {
        onClick?.(event);
        toggleSidebar();
      }}
      {...props}>
      <PanelLeft />
      <span className="sr-only">Toggle Sidebar</span>
    </Button>
  );
});

export const SidebarRail = React.forwardRef(function SidebarRail({ className, ...props }, ref) {
  const { toggleSidebar } = useSidebar();
  return (
    <button ref={ref} data-sidebar="rail" aria-label="Toggle Sidebar" tabIndex={-1} onClick={toggleSidebar}
      title="Toggle Sidebar"
      className={cn(
        "absolute inset-y-0 z-20 hidden w-4 -translate-x-1/2 transition-all ease-linear after:absolute after:inset-y-0 after:left-1/2 after:w-[2px] hover:after:bg-[hsl(var(--sidebar-border))] group-data-[side=left]:-right-4 group-data-[side=right]:left-0 sm:flex",
        "[[data-side=left]_&]:cursor-w-resize [[data-side=right]_&]:cursor-e-resize",
        "[[data-side=left][data-state=collapsed]_&]:cursor-e-resize [[data-side=right][data-state=collapsed]_&]:cursor-w-resize",
        "group-data-[collapsible=offcanvas]:translate-x-0 group-data-[collapsible=offcanvas]:after:left-full group-data-[collapsible=offcanvas]:hover:bg-[hsl(var(--sidebar-background))]",
        "[[data-side=left][data-collapsible=offcanvas]_&]:-right-2 [[data-side=right][data-collapsible=offcanvas]_&]:-left-2",
        className)}
      {...props} />
  );
});

export const SidebarInset = React.forwardRef(function SidebarInset({ className, ...props }, ref) {
  return (
    <main ref={ref}
      className={cn(
        "relative flex min-h-screen flex-1 flex-col bg-background",
        "peer-data-[variant=inset]:min-h-[calc(100vh-1rem)] md:peer-data-[variant=inset]:m-2 md:peer-data-[state=collapsed]:peer-data-[variant=inset]:ml-2 md:peer-data-[variant=inset]:ml-0 md:peer-data-[variant=inset]:rounded-xl md:peer-data-[variant=inset]:shadow",
        className)}
      {...props} />
  );
});

export const SidebarInput = React.forwardRef(function SidebarInput({ className, ...props }, ref) {
  return <Input ref={ref} data-sidebar="input"
    className={cn("h-8 w-full bg-background shadow-none focus-visible:ring-2 focus-visible:ring-[hsl(var(--sidebar-ring))]", className)}
    {...props} />;
});

// A plain element of the sidebar, marked by its data-sidebar name.
function element(Tag, name, displayName, classes) {
  const Component = React.forwardRef(function SidebarElement({ className, ...props }, ref) {
    return <Tag ref={ref} data-sidebar={name} className={cn(classes, className)} {...props} />;
  });
  Component.displayName = displayName;
  return Component;
}

export const SidebarHeader = element("div", "header", "SidebarHeader", "flex flex-col gap-2 p-2");
export const SidebarFooter = element("div", "footer", "SidebarFooter", "flex flex-col gap-2 p-2");
export const SidebarContent = element("div", "content", "SidebarContent",
  "flex min-h-0 flex-1 flex-col gap-2 overflow-auto group-data-[collapsible=icon]:overflow-hidden");
export const SidebarGroup = element("div", "group", "SidebarGroup", "relative flex w-full min-w-0 flex-col p-2");
export const SidebarGroupContent = element("div", "group-content", "SidebarGroupContent", "w-full text-sm");
export const SidebarMenu = element("ul", "menu", "SidebarMenu", "flex w-full min-w-0 flex-col gap-1");
export const SidebarMenuItem = element("li", "menu-item", "SidebarMenuItem", "group/menu-item relative");
export const SidebarMenuSubItem = element("li", "menu-sub-item", "SidebarMenuSubItem", "");
export const SidebarMenuSub = element("ul", "menu-sub", "SidebarMenuSub",
  "mx-3.5 flex min-w-0 translate-x-px flex-col gap-1 border-l border-[hsl(var(--sidebar-border))] px-2.5 py-0.5 group-data-[collapsible=icon]:hidden");

export const SidebarSeparator = React.forwardRef(function SidebarSeparator({ className, ...props }, ref) {
  return <Separator ref={ref} data-sidebar="separator"
    className={cn("mx-2 w-auto bg-[hsl(var(--sidebar-border))]", className)} {...props} />;
});

// An element that may hand its props to the caller's element (asChild).
function slottable(tag, name, displayName, classes) {
  const Component = React.forwardRef(function SidebarSlottable({ className, asChild = false, ...props }, ref) {
    const Tag = asChild ? Slot : tag;
    return <Tag ref={ref} data-sidebar={name} className={cn(classes, className)} {...props} />;
  });
  Component.displayName = displayName;
  return Component;
}

export const SidebarGroupLabel = slottable("div", "group-label", "SidebarGroupLabel", cn(
  "flex h-8 shrink-0 items-center rounded-md px-2 text-xs font-medium text-[hsl(var(--sidebar-foreground)/0.7)] transition-[margin,opacity] duration-200 ease-linear [&>svg]:h-4 [&>svg]:w-4 [&>svg]:shrink-0",
  ring, "group-data-[collapsible=icon]:-mt-8 group-data-[collapsible=icon]:opacity-0"));

export const SidebarGroupAction = slottable("button", "group-action", "SidebarGroupAction", cn(
  "absolute right-3 top-3.5 flex aspect-square w-5 items-center justify-center rounded-md p-0 transition-transform [&>svg]:h-4 [&>svg]:w-4 [&>svg]:shrink-0",
  fg, ring, accented, "after:absolute after:-inset-2 md:after:hidden group-data-[collapsible=icon]:hidden"));

export const sidebarMenuButtonVariants = cva(
  cn("peer/menu-button flex w-full items-center gap-2 overflow-hidden rounded-md p-2 text-left text-sm transition-[width,height,padding] disabled:pointer-events-none disabled:opacity-50 aria-disabled:pointer-events-none aria-disabled:opacity-50",
    ring, accented,
    "[[data-sidebar=menu-item]:has(>[data-sidebar=menu-action])_&]:pr-8",
    "data-[active=true]:bg-[hsl(var(--sidebar-accent))] data-[active=true]:font-medium data-[active=true]:text-[hsl(var(--sidebar-accent-foreground))]",
    "data-[state=open]:hover:bg-[hsl(var(--sidebar-accent))] data-[state=open]:hover:text-[hsl(var(--sidebar-accent-foreground))]",
    "group-data-[collapsible=icon]:!h-8 group-data-[collapsible=icon]:!w-8 group-data-[collapsible=icon]:!p-2 [&>span:last-child]:truncate [&>svg]:h-4 [&>svg]:w-4 [&>svg]:shrink-0"),
  {
    variants: {
      variant: {
        default: "",
        outline: "bg-background shadow-[0_0_0_1px_hsl(var(--sidebar-border))] hover:shadow-[0_0_0_1px_hsl(var(--sidebar-accent))]",
      },
      size: {
        default: "h-8 text-sm",
        sm: "h-7 text-xs",
        lg: "h-12 text-sm group-data-[collapsible=icon]:!p-0",
      },
    },
    defaultVariants: { variant: "default", size: "default" },
  },
);

export const SidebarMenuButton = React.forwardRef(function SidebarMenuButton(
  { asChild = false, isActive = false, variant = "default", size = "default", tooltip, className, ...props }, ref) {
  const Tag = asChild ? Slot : "button";
  const { isMobile, state } = useSidebar();
  const button = (
    <Tag ref={ref} data-sidebar="menu-button" data-size={size} data-active={isActive}
      className={cn(sidebarMenuButtonVariants({ variant, size }), className)} {...props} />
  );
  if (!tooltip)
    return button;
  const content = typeof tooltip === "string" ? { children: tooltip } : tooltip;
  // The label is on the button already unless the sidebar shows only icons.
  return (
    <Tooltip delayDuration={0}>
      <TooltipTrigger asChild>{button}</TooltipTrigger>
      <TooltipContent side="right" align="center" hidden={state !== "collapsed" || isMobile} {...content} />
    </Tooltip>
  );
});

export const SidebarMenuAction = React.forwardRef(function SidebarMenuAction(
  { className, asChild = false, showOnHover = false, ...props }, ref) {
  const Tag = asChild ? Slot : "button";
  return (
    <Tag ref={ref} data-sidebar="menu-action"
      className={cn(
        "absolute right-1 top-1.5 flex aspect-square w-5 items-center justify-center rounded-md p-0 transition-transform peer-hover/menu-button:text-[hsl(var(--sidebar-accent-foreground))] [&>svg]:h-4 [&>svg]:w-4 [&>svg]:shrink-0",
        fg, ring, accented,
        "after:absolute after:-inset-2 md:after:hidden",
        "peer-data-[size=sm]/menu-button:top-1 peer-data-[size=default]/menu-button:top-1.5 peer-data-[size=lg]/menu-button:top-2.5",
        "group-data-[collapsible=icon]:hidden",
        showOnHover && "group-focus-within/menu-item:opacity-100 group-hover/menu-item:opacity-100 data-[state=open]:opacity-100 peer-data-[active=true]/menu-button:text-[hsl(var(--sidebar-accent-foreground))] md:opacity-0",
        className)}
      {...props} />
  );
});

export const SidebarMenuBadge = element("div", "menu-badge", "SidebarMenuBadge", cn(
  "pointer-events-none absolute right-1 flex h-5 min-w-[1.25rem] select-none items-center justify-center rounded-md px-1 text-xs font-medium tabular-nums",
  fg,
  "peer-hover/menu-button:text-[hsl(var(--sidebar-accent-foreground))] peer-data-[active=true]/menu-button:text-[hsl(var(--sidebar-accent-foreground))]",
  "peer-data-[size=sm]/menu-button:top-1 peer-data-[size=default]/menu-button:top-1.5 peer-data-[size=lg]/menu-button:top-2.5",
  "group-data-[collapsible=icon]:hidden"));

export const SidebarMenuSkeleton = React.forwardRef(function SidebarMenuSkeleton(
  { className, showIcon = false, ...props }, ref) {
  // Lines of different lengths read as text that is loading.
  const textWidth = React.useMemo(() => `${Math.floor(Math.random() * 40) + 50}%`, []);
  return (
    <div ref={ref} data-sidebar="menu-skeleton"
      className={cn("flex h-8 items-center gap-2 rounded-md px-2", className)} {...props}>
      {showIcon && <Skeleton className="h-4 w-4 rounded-md" data-sidebar="menu-skeleton-icon" />}
      <Skeleton className="h-4 max-w-[var(--skeleton-width)] flex-1" data-sidebar="menu-skeleton-text"
        style={{ "--skeleton-width": textWidth }} />
    </div>
  );
});

export const SidebarMenuSubButton = React.forwardRef(function SidebarMenuSubButton(
  { asChild = false, size = "md", isActive, className, ...props }, ref) {
  const Tag = asChild ? Slot : "a";
  return (
    <Tag ref={ref} data-sidebar="menu-sub-button" data-size={size} data-active={isActive}
      className={cn(
        "flex h-7 min-w-0 -translate-x-px items-center gap-2 overflow-hidden rounded-md px-2 disabled:pointer-events-none disabled:opacity-50 aria-disabled:pointer-events-none aria-disabled:opacity-50 [&>span:last-child]:truncate [&>svg]:h-4 [&>svg]:w-4 [&>svg]:shrink-0 [&>svg]:text-[hsl(var(--sidebar-accent-foreground))]",
        fg, ring, accented,
        "data-[active=true]:bg-[hsl(var(--sidebar-accent))] data-[active=true]:text-[hsl(var(--sidebar-accent-foreground))]",
        size === "sm" ? "text-xs" : "text-sm",
        "group-data-[collapsible=icon]:hidden",
        className)}
      {...props} />
  );
});
