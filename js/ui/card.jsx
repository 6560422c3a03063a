import { styled } from "./styled.js";

export const Card = styled("div", "Card", "rounded-lg border bg-card text-card-foreground shadow-sm");
export const CardHeader = styled("div", "CardHeader", "flex flex-col space-y-1.5 p-6");
export const CardTitle = styled("h3", "CardTitle",
  "text-2xl font-semibold leading-none tracking-tight");
export const CardDescription = styled("p", "CardDescription", "text-sm text-muted-foreground");
export const CardContent = styled("div", "CardContent", "p-6 pt-0");
export const CardFooter = styled("div", "CardFooter", "flex items-center p-6 pt-0");
