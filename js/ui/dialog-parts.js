// Classes shared by the dialog, alert dialog and sheet.
export const overlayClasses =
  "fixed inset-0 z-50 bg-black/80 data-[state=open]:animate-in";
export const contentClasses =
  "fixed left-[50%] top-[50%] z-50 grid w-full max-w-lg translate-x-[-50%] translate-y-[-50%] gap-4 border bg-background p-6 shadow-lg duration-200 data-[state=open]:animate-in sm:rounded-lg";
export const headerClasses = "flex flex-col space-y-1.5 text-center sm:text-left";
export const footerClasses = "flex flex-col-reverse sm:flex-row sm:justify-end sm:space-x-2";
export const titleClasses = "text-lg font-semibold leading-none tracking-tight";
export const descriptionClasses = "text-sm text-muted-foreground";
