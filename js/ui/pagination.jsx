import { ChevronLeft, ChevronRight, MoreHorizontal } from "lucide-react";
import * as React from "react";
import { cn } from "../lib/utils.js";
import { buttonVariants } from "./button.jsx";
import { styled } from "./styled.js";

export function Pagination({ className, ...props }) {
  return <nav role="navigation" aria-label="pagination"
    className={cn("mx-auto flex w-full justify-center", className)} {...props} />;
}

export const PaginationContent = styled("ul", "PaginationContent", "flex flex-row items-center gap-1");
export const PaginationItem = styled("li", "PaginationItem", "");

export const PaginationLink = React.forwardRef(function PaginationLink(
  { className, isActive, size = "icon", ...props }, ref) {
  return <a ref={ref} aria-current={isActive ? "page" : undefined}
    className={cn(buttonVariants({ variant: isActive ? "outline" : "ghost", size }),
      "cursor-pointer", className)}
    {...props} />;
});

export function PaginationPrevious({ className, ...props }) {
  return (
    <PaginationLink aria-label="Go to previous page" size="default"
      className={cn("gap-1 pl-2.5", className)} {...props}>
      <ChevronLeft className="h-4 w-4" />
      <span>Previous</span>
    </PaginationLink>
  );
}

export function PaginationNext({ className, ...props }) {
  return (
    <PaginationLink aria-label="Go to next page" size="default"
      className={cn("gap-1 pr-2.5", className)} {...props}>
      <span>Next</span>
      <ChevronRight className="h-4 w-4" />
    </PaginationLink>
  );
}

export function PaginationEllipsis({ className, ...props }) {
  return (
    <span aria-hidden className={cn("flex h-9 w-9 items-center justify-center", className)} {...props}>
      <MoreHorizontal className="h-4 w-4" />
      <span className="sr-only">More pages</span>
    </span>
  );
}
