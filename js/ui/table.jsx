import * as React from "react";
import { cn } from "../lib/utils.js";
import { styled } from "./styled.js";

export const Table = React.forwardRef(function Table({ className, ...props }, ref) {
  return (
    <div className="relative w-full overflow-auto">
      <table ref={ref} className={cn("w-full caption-bottom text-sm", className)} {...props} />
    </div>
  );
});

export const TableHeader = styled("thead", "TableHeader", "[&_tr]:border-b");
export const TableBody = styled("tbody", "TableBody", "[&_tr:last-child]:border-0");
export const TableFooter = styled("tfoot", "TableFooter",
  "border-t bg-muted/50 font-medium [&>tr]:last:border-b-0");
export const TableRow = styled("tr", "TableRow",
  "border-b transition-colors hover:bg-muted/50 data-[state=selected]:bg-muted");
export const TableHead = styled("th", "TableHead",
  "h-12 px-4 text-left align-middle font-medium text-muted-foreground [&:has([role=checkbox])]:pr-0");
export const TableCell = styled("td", "TableCell", "p-4 align-middle [&:has([role=checkbox])]:pr-0");
export const TableCaption = styled("caption", "TableCaption", "mt-4 text-sm text-muted-foreground");
