import { Slot } from "@radix-ui/react-slot";
import { ChevronRight, MoreHorizontal } from "lucide-react";
import * as React from "react";
import { cn } from "../lib/utils.js";
import { styled } from "./styled.js";

export const Breadcrumb = React.forwardRef(function Breadcrumb({ separator, ...props }, ref) {
  return <nav ref={ref} aria-label="breadcrumb" {...props} />;
});

export const BreadcrumbList = styled("ol", "BreadcrumbList",
  "flex list-none flex-wrap items-center gap-1.5 break-words text-sm text-muted-foreground sm:gap-2.5");

export const BreadcrumbItem = styled("li", "BreadcrumbItem", "inline-flex items-center gap-1.5");

export const BreadcrumbLink = React.forwardRef(function BreadcrumbLink(
  { asChild, className, ...props }, ref) {
  const Component = asChild ? Slot : "a";
  return <Component ref={ref} className={cn("transition-colors hover:text-foreground", className)}
    {...props} />;
});

export const BreadcrumbPage = React.forwardRef(function BreadcrumbPage({ className, ...props }, ref) {
  return <span ref={ref} role="link" aria-disabled="true" aria-current="page"
    className={cn("font-normal text-foreground", className)} {...props} />;
});

export function BreadcrumbSeparator({ children, className, ...props }) {
  return (
    <li role="presentation" aria-hidden="true" className={cn("[&>svg]:h-3.5 [&>svg]:w-3.5", className)}
      {...props}>
      {children ?? <ChevronRight />}
    </li>
  );
}

export function BreadcrumbEllipsis({ className, ...props }) {
  return (
    <span role="presentation" aria-hidden="true"
      className={cn("flex h-9 w-9 items-center justify-center", className)} {...props}>
      <MoreHorizontal className="h-4 w-4" />
      <span className="sr-only">More</span>
    </span>
  );
}
