import * as LabelPrimitive from "@radix-ui/react-label";
import { styledPart } from "./styled.js";

export const Label = styledPart(LabelPrimitive.Root, "Label",
  "text-sm font-medium leading-none peer-disabled:cursor-not-allowed peer-disabled:opacity-70");
