import { useState } from "react";
import { Dialog, DialogContent, DialogDescription, DialogFooter, DialogHeader, DialogTitle, DialogTrigger } from "@/components/ui/dialog";
import { AlertDialog, AlertDialogAction, AlertDialogCancel, AlertDialogContent, AlertDialogDescription, AlertDialogFooter, AlertDialogHeader, AlertDialogTitle, AlertDialogTrigger } from "@/components/ui/alert-dialog";
import { Sheet, SheetContent, SheetHeader, SheetTitle, SheetTrigger } from "@/components/ui/sheet";
import { Popover, PopoverContent, PopoverTrigger } from "@/components/ui/popover";
import { Select, SelectContent, SelectItem, SelectTrigger, SelectValue } from "@/components/ui/select";
import { Accordion, AccordionContent, AccordionItem, AccordionTrigger } from "@/components/ui/accordion";
import { Toggle } from "@/components/ui/toggle";
import { Button } from "@/components/ui/button";
import { Input } from "@/components/ui/input";
import { Bold } from "lucide-react";

export default function Overlays() {
  const [open, setOpen] = useState(false);
  const [fruit, setFruit] = useState("apple");
  return <div className="flex flex-col items-start gap-4 p-6">
    <Dialog open={open} onOpenChange={setOpen}>
      <DialogTrigger asChild><Button id="open-dialog">Edit profile</Button></DialogTrigger>
      <DialogContent><DialogHeader><DialogTitle>Edit profile</DialogTitle><DialogDescription>Make changes here.</DialogDescription></DialogHeader>
        <Input defaultValue="Pedro" /><DialogFooter><Button onClick={() => setOpen(false)}>Save</Button></DialogFooter></DialogContent>
    </Dialog>
    <AlertDialog><AlertDialogTrigger asChild><Button variant="destructive">Delete</Button></AlertDialogTrigger>
      <AlertDialogContent><AlertDialogHeader><AlertDialogTitle>Are you sure?</AlertDialogTitle><AlertDialogDescription>This cannot be undone.</AlertDialogDescription></AlertDialogHeader>
        <AlertDialogFooter><AlertDialogCancel>Cancel</AlertDialogCancel><AlertDialogAction>Continue</AlertDialogAction></AlertDialogFooter></AlertDialogContent>
    </AlertDialog>
    <Sheet><SheetTrigger asChild><Button variant="outline">Open sheet</Button></SheetTrigger><SheetContent><SheetHeader><SheetTitle>Filters</SheetTitle></SheetHeader></SheetContent></Sheet>
    <Popover><PopoverTrigger asChild><Button variant="secondary">Popover</Button></PopoverTrigger><PopoverContent>Dimensions</PopoverContent></Popover>
    <Select value={fruit} onValueChange={setFruit}><SelectTrigger className="w-[180px]"><SelectValue placeholder="Fruit" /></SelectTrigger>
      <SelectContent><SelectItem value="apple">Apple</SelectItem><SelectItem value="banana">Banana</SelectItem></SelectContent></Select>
    <Accordion type="single" collapsible><AccordionItem value="a"><AccordionTrigger>Is it accessible?</AccordionTrigger><AccordionContent>Yes.</AccordionContent></AccordionItem></Accordion>
    <Toggle aria-label="Bold"><Bold className="h-4 w-4" /></Toggle>
  </div>;
}
