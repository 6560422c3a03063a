import * as AvatarPrimitive from "@radix-ui/react-avatar";
import { styledPart } from "./styled.js";

export const Avatar = styledPart(AvatarPrimitive.Root, "Avatar",
  "relative flex h-10 w-10 shrink-0 overflow-hidden rounded-full");
export const AvatarImage = styledPart(AvatarPrimitive.Image, "AvatarImage", "aspect-square h-full w-full");
export const AvatarFallback = styledPart(AvatarPrimitive.Fallback, "AvatarFallback",
  "flex h-full w-full items-center justify-center rounded-full bg-muted");
