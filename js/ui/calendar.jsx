// kelmo: own bundle, borrows react-day-picker
import { ChevronDown, ChevronLeft, ChevronRight, ChevronUp } from "lucide-react";
import * as React from "react";
import { DayPicker } from "react-day-picker";
import { cn } from "../lib/utils.js";
import { buttonVariants } from "./button.jsx";

// Props of react-day-picker 8, which many artifacts are written against, in the
// terms of the shipped version.
function currentProps({ fromYear, toYear, fromMonth, toMonth, fromDate, toDate, initialFocus, captionLayout,
  disabled, ...props }) {
  const start = fromDate ?? fromMonth ?? (fromYear !== undefined ? new Date(fromYear, 0, 1) : undefined);
  const end = toDate ?? toMonth ?? (toYear !== undefined ? new Date(toYear, 11, 31) : undefined);
  const outOfRange = [fromDate && { before: fromDate }, toDate && { after: toDate }].filter(Boolean);
  return {
    startMonth: start,
    endMonth: end,
    autoFocus: initialFocus,
    captionLayout: captionLayout === "dropdown-buttons" ? "dropdown" : captionLayout === "buttons" ? "label" : captionLayout,
    disabled: outOfRange.length ? [disabled, ...outOfRange].filter((matcher) => matcher !== undefined) : disabled,
    ...props,
  };
}

function CalendarChevron({ orientation, className, size, disabled, ...props }) {
  const Icon = { left: ChevronLeft, right: ChevronRight, up: ChevronUp }[orientation] ?? ChevronDown;
  return <Icon className={cn("h-4 w-4", className)} {...props} />;
}

export function CalendarDayButton({ className, day, modifiers, ...props }) {
  const ref = React.useRef(null);
  React.useEffect(() => {
    if (modifiers.focused)
      ref.current?.focus();
  }, [modifiers.focused]);
  const inRange = modifiers.range_start || modifiers.range_end || modifiers.range_middle;
  const single = modifiers.selected && !inRange;
  const end = modifiers.range_start || modifiers.range_end;
  return (
    <button ref={ref} data-day={day.date.toLocaleDateString()} data-selected-single={single || undefined}
      data-range-start={modifiers.range_start || undefined} data-range-end={modifiers.range_end || undefined}
      data-range-middle={modifiers.range_middle || undefined}
      className={cn(buttonVariants({ variant: "ghost" }), "h-8 w-8 p-0 font-normal",
        modifiers.today && !modifiers.selected && "bg-accent text-accent-foreground",
        modifiers.outside && "text-muted-foreground opacity-50",
        (single || end) && "bg-primary text-primary-foreground opacity-100 hover:bg-primary hover:text-primary-foreground focus:bg-primary focus:text-primary-foreground",
        modifiers.range_middle && "rounded-none bg-transparent text-accent-foreground hover:bg-transparent",
        modifiers.disabled && "text-muted-foreground opacity-50",
        className)}
      {...props} />
  );
}

export function Calendar({ className, classNames, showOutsideDays = true, components, ...props }) {
  const current = currentProps(props);
  const dropdown = current.captionLayout?.startsWith("dropdown");
  const navButton = cn(buttonVariants({ variant: "outline" }),
    "h-7 w-7 bg-transparent p-0 opacity-50 hover:opacity-100 aria-disabled:pointer-events-none aria-disabled:opacity-30");
  return (
    <DayPicker showOutsideDays={showOutsideDays} className={cn("p-3", className)}
      classNames={{
        root: "w-fit",
        months: "relative flex flex-col gap-4 sm:flex-row",
        month: "flex w-full flex-col gap-4",
        nav: "absolute inset-x-0 top-0 flex w-full items-center justify-between",
        button_previous: cn(navButton, "relative z-10"),
        button_next: cn(navButton, "relative z-10"),
        month_caption: "flex h-7 w-full items-center justify-center px-8",
        caption_label: dropdown
          ? "flex h-7 items-center gap-1 rounded-md pl-2 pr-1 text-sm font-medium [&>svg]:h-3.5 [&>svg]:w-3.5 [&>svg]:text-muted-foreground"
          : "text-sm font-medium",
        dropdowns: "flex h-7 w-full items-center justify-center gap-1.5 text-sm font-medium",
        dropdown_root: "relative rounded-md border border-input shadow-sm [&:has(:focus)]:ring-1 [&:has(:focus)]:ring-ring",
        dropdown: "absolute inset-0 z-10 cursor-pointer bg-popover opacity-0",
        month_grid: "w-full border-collapse",
        weekdays: "flex",
        weekday: "w-8 rounded-md text-[0.8rem] font-normal text-muted-foreground",
        week: "mt-2 flex w-full",
        week_number_header: "w-8 select-none",
        week_number: "flex h-8 w-8 items-center justify-center text-[0.8rem] text-muted-foreground",
        day: "relative h-8 w-8 p-0 text-center text-sm focus-within:relative focus-within:z-20 data-[outside]:data-[selected]:bg-accent/50",
        range_start: "rounded-l-md bg-accent",
        range_middle: "bg-accent",
        range_end: "rounded-r-md bg-accent",
        hidden: "invisible",
        ...classNames,
      }}
      components={{ Chevron: CalendarChevron, DayButton: CalendarDayButton, ...components }}
      {...current} />
  );
}
Calendar.displayName = "Calendar";
