import { useState } from "react";
import { useForm } from "react-hook-form";
import { zodResolver } from "@hookform/resolvers/zod";
import { z } from "zod";
import { toast } from "sonner";
import { Command, CommandEmpty, CommandGroup, CommandInput, CommandItem, CommandList, CommandSeparator, CommandShortcut } from "@/components/ui/command";
import { Calendar } from "@/components/ui/calendar";
import { InputOTP, InputOTPGroup, InputOTPSeparator, InputOTPSlot } from "@/components/ui/input-otp";
import { Form, FormControl, FormDescription, FormField, FormItem, FormLabel, FormMessage } from "@/components/ui/form";
import { Toaster } from "@/components/ui/sonner";
import { Drawer, DrawerClose, DrawerContent, DrawerDescription, DrawerFooter, DrawerHeader, DrawerTitle, DrawerTrigger } from "@/components/ui/drawer";
import { Carousel, CarouselContent, CarouselItem, CarouselNext, CarouselPrevious } from "@/components/ui/carousel";
import { Card, CardContent } from "@/components/ui/card";
import { Input } from "@/components/ui/input";
import { Button } from "@/components/ui/button";
import { Calculator, Calendar as CalendarIcon, Settings, Smile, User } from "lucide-react";

const schema = z.object({ username: z.string().min(2, { message: "Username must be at least 2 characters." }) });

export default function Inputs() {
  const [date, setDate] = useState(new Date(2024, 5, 12));
  const [code, setCode] = useState("12");
  const form = useForm({ resolver: zodResolver(schema), defaultValues: { username: "" } });
  return <div className="grid grid-cols-2 gap-8 p-6">
    <Command className="rounded-lg border shadow-md">
      <CommandInput id="command-search" placeholder="Type a command or search..." />
      <CommandList>
        <CommandEmpty>No results found.</CommandEmpty>
        <CommandGroup heading="Suggestions">
          <CommandItem><CalendarIcon /><span>Calendar</span></CommandItem>
          <CommandItem><Smile /><span>Search Emoji</span></CommandItem>
          <CommandItem disabled><Calculator /><span>Calculator</span></CommandItem>
        </CommandGroup>
        <CommandSeparator />
        <CommandGroup heading="Settings">
          <CommandItem><User /><span>Profile</span><CommandShortcut>⌘P</CommandShortcut></CommandItem>
          <CommandItem><Settings /><span>Settings</span><CommandShortcut>⌘S</CommandShortcut></CommandItem>
        </CommandGroup>
      </CommandList>
    </Command>
    <Calendar mode="single" selected={date} onSelect={setDate} defaultMonth={date} className="rounded-md border" />
    <div className="space-y-4">
      <InputOTP maxLength={6} value={code} onChange={setCode}>
        <InputOTPGroup><InputOTPSlot index={0} /><InputOTPSlot index={1} /><InputOTPSlot index={2} /></InputOTPGroup>
        <InputOTPSeparator />
        <InputOTPGroup><InputOTPSlot index={3} /><InputOTPSlot index={4} /><InputOTPSlot index={5} /></InputOTPGroup>
      </InputOTP>
      <Form {...form}>
        <form id="profile-form" onSubmit={form.handleSubmit((values) => toast("Saved", { description: values.username }))} className="space-y-4">
          <FormField control={form.control} name="username" render={({ field }) => (
            <FormItem><FormLabel>Username</FormLabel><FormControl><Input placeholder="shadcn" {...field} /></FormControl>
              <FormDescription>This is your public display name.</FormDescription><FormMessage /></FormItem>)} />
          <Button type="submit">Submit</Button>
        </form>
      </Form>
      <Drawer><DrawerTrigger asChild><Button variant="outline" id="open-drawer">Open drawer</Button></DrawerTrigger>
        <DrawerContent><DrawerHeader><DrawerTitle>Move goal</DrawerTitle><DrawerDescription>Set your daily activity goal.</DrawerDescription></DrawerHeader>
          <DrawerFooter><Button>Submit</Button><DrawerClose asChild><Button variant="outline">Cancel</Button></DrawerClose></DrawerFooter></DrawerContent></Drawer>
    </div>
    <div className="px-12">
      <Carousel className="w-full max-w-xs">
        <CarouselContent>{[1, 2, 3, 4, 5].map((n) => <CarouselItem key={n}><Card><CardContent className="flex aspect-square items-center justify-center p-6"><span className="text-4xl font-semibold">{n}</span></CardContent></Card></CarouselItem>)}</CarouselContent>
        <CarouselPrevious /><CarouselNext />
      </Carousel>
    </div>
    <Toaster />
  </div>;
}
