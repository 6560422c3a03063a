// Older shadcn/ui projects keep the toast hook beside the components.
export { reducer, toast, useToast } from "../hooks/use-toast.js";
