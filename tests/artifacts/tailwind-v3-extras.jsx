import { Settings, Star } from "lucide-react";
import { Button } from "@/components/ui/button";
import {
  DropdownMenu, DropdownMenuContent, DropdownMenuItem, DropdownMenuLabel, DropdownMenuSeparator,
  DropdownMenuTrigger,
} from "@/components/ui/dropdown-menu";

// Classes of Tailwind 3.3 and 3.4 that current shadcn/ui components use.
export default function Extras() {
  return <div className="flex min-h-svh flex-col gap-4 bg-background p-6 text-foreground">
    <div className="flex items-center gap-3">
      <DropdownMenu modal={false}>
        <DropdownMenuTrigger asChild>
          <Button id="menu-trigger" variant="outline"><Settings /> Options</Button>
        </DropdownMenuTrigger>
        <DropdownMenuContent id="menu" className="w-56" align="start">
          <DropdownMenuLabel>Account</DropdownMenuLabel>
          <DropdownMenuSeparator />
          <DropdownMenuItem><Star /> Favourites</DropdownMenuItem>
          <DropdownMenuItem>Profile</DropdownMenuItem>
          <DropdownMenuItem>Billing</DropdownMenuItem>
          <DropdownMenuItem>Sign out</DropdownMenuItem>
        </DropdownMenuContent>
      </DropdownMenu>
      <Button id="icon-button"><Star /> Star</Button>
      <span id="size" className="size-4 rounded-full bg-chart-1" />
      <span id="size-arbitrary" className="size-[20px] rounded-full bg-chart-2" />
    </div>

    {/* Positioned and stacked above the page, as cards with badges often are. */}
    <div id="card" className="relative z-10 h-48 w-96 rounded-lg border bg-card p-4 shadow-sm">
      <p className="font-medium">A card above the page</p>
      <p id="clamped" className="w-64 text-sm text-muted-foreground [&>span]:line-clamp-1">
        <span>One line only, however long the sentence that fills this paragraph grows.</span>
      </p>
    </div>

    <div id="variables" style={{ "--probe-width": "123px", "--probe-colour": "rgb(1, 2, 3)" }}
      className="h-[--probe-width] w-[--probe-width] max-w-[--probe-width] rounded-md bg-[--probe-colour]" />

    <div className="group flex items-center gap-2">
      <label id="has" className="flex items-center gap-2 rounded-md border p-2 has-[:checked]:bg-muted">
        <input type="checkbox" defaultChecked /> Checked
      </label>
      <span id="group-has" className="group-has-[:checked]:font-bold">Bold while checked</span>
    </div>

    <div id="logical" className="ms-3 me-4 w-fit rounded-s-lg rounded-ee-md border-s-4 border-e-2 border-sidebar-border ps-2 pe-5">
      Logical edges
    </div>
    <div dir="rtl"><div id="logical-rtl" className="ms-3 w-fit">من اليمين</div></div>
    <div className="relative h-6 w-64 rounded bg-muted">
      <span id="inset" className="absolute start-2 end-6 top-1 h-4 rounded bg-sidebar-primary" />
    </div>

    <div className="dark"><p id="dark" className="text-black dark:text-white">dark</p></div>
    <p id="light" className="text-black dark:text-white">light</p>
    <div id="sidebar" className="flex w-64 flex-col gap-1 rounded-lg border border-sidebar-border bg-sidebar p-2 text-sidebar-foreground">
      <span className="rounded-md bg-sidebar-primary px-2 py-1 text-sidebar-primary-foreground" id="sidebar-primary">Home</span>
      <span className="rounded-md bg-sidebar-accent px-2 py-1 text-sidebar-accent-foreground">Projects</span>
    </div>

    <div className="h-0 overflow-hidden">
      <div id="viewport" className="h-dvh min-h-svh w-svw" />
    </div>
  </div>;
}
