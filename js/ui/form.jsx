// kelmo: own bundle, borrows react-hook-form
import { Slot } from "@radix-ui/react-slot";
import * as React from "react";
import { Controller, FormProvider, useFormContext, useFormState } from "react-hook-form";
import { cn } from "../lib/utils.js";
import { Label } from "./label.jsx";

export const Form = FormProvider;

const FormFieldContext = React.createContext(null);
const FormItemContext = React.createContext({});

export function FormField(props) {
  return (
    <FormFieldContext.Provider value={{ name: props.name }}>
      <Controller {...props} />
    </FormFieldContext.Provider>
  );
}

export function useFormField() {
  const field = React.useContext(FormFieldContext);
  const { id } = React.useContext(FormItemContext);
  const { getFieldState } = useFormContext();
  if (!field)
    throw new Error("useFormField should be used within <FormField>");
  // Subscribes to this field's state, so that its label and message follow it.
  const formState = useFormState({ name: field.name });
  return {
    id,
    name: field.name,
    formItemId: `${id}-form-item`,
    formDescriptionId: `${id}-form-item-description`,
    formMessageId: `${id}-form-item-message`,
    ...getFieldState(field.name, formState),
  };
}

export const FormItem = React.forwardRef(function FormItem({ className, ...props }, ref) {
  const id = React.useId();
  return (
    <FormItemContext.Provider value={{ id }}>
      <div ref={ref} className={cn("space-y-2", className)} {...props} />
    </FormItemContext.Provider>
  );
});

export const FormLabel = React.forwardRef(function FormLabel({ className, ...props }, ref) {
  const { error, formItemId } = useFormField();
  return <Label ref={ref} className={cn(error && "text-destructive", className)} htmlFor={formItemId} {...props} />;
});

export const FormControl = React.forwardRef(function FormControl(props, ref) {
  const { error, formItemId, formDescriptionId, formMessageId } = useFormField();
  return <Slot ref={ref} id={formItemId}
    aria-describedby={error ? `${formDescriptionId} ${formMessageId}` : formDescriptionId}
    aria-invalid={Boolean(error)} {...props} />;
});

export const FormDescription = React.forwardRef(function FormDescription({ className, ...props }, ref) {
  const { formDescriptionId } = useFormField();
  return <p ref={ref} id={formDescriptionId} className={cn("text-sm text-muted-foreground", className)} {...props} />;
});

export const FormMessage = React.forwardRef(function FormMessage({ className, children, ...props }, ref) {
  const { error, formMessageId } = useFormField();
  const body = error ? String(error.message ?? "") : children;
  if (!body)
    return null;
  return (
    <p ref={ref} id={formMessageId} className={cn("text-sm font-medium text-destructive", className)} {...props}>
      {body}
    </p>
  );
});
