import { useState } from "react";
import { Breadcrumb, BreadcrumbEllipsis, BreadcrumbItem, BreadcrumbLink, BreadcrumbList, BreadcrumbPage, BreadcrumbSeparator } from "@/components/ui/breadcrumb";
import { Pagination, PaginationContent, PaginationEllipsis, PaginationItem, PaginationLink, PaginationNext, PaginationPrevious } from "@/components/ui/pagination";
import { Menubar, MenubarCheckboxItem, MenubarContent, MenubarItem, MenubarMenu, MenubarSeparator, MenubarShortcut, MenubarTrigger } from "@/components/ui/menubar";
import { ContextMenu, ContextMenuContent, ContextMenuItem, ContextMenuShortcut, ContextMenuTrigger } from "@/components/ui/context-menu";
import { NavigationMenu, NavigationMenuContent, NavigationMenuItem, NavigationMenuLink, NavigationMenuList, NavigationMenuTrigger, navigationMenuTriggerStyle } from "@/components/ui/navigation-menu";
import { Toaster } from "@/components/ui/toaster";
import { useToast } from "@/components/ui/use-toast";
import { ToastAction } from "@/components/ui/toast";
import { Button } from "@/components/ui/button";

export default function Navigation() {
  const [page, setPage] = useState(2);
  const [ruler, setRuler] = useState(true);
  const { toast } = useToast();
  return <div className="flex flex-col items-start gap-6 p-6">
    <Breadcrumb><BreadcrumbList>
      <BreadcrumbItem><BreadcrumbLink href="#">Home</BreadcrumbLink></BreadcrumbItem><BreadcrumbSeparator />
      <BreadcrumbItem><BreadcrumbEllipsis /></BreadcrumbItem><BreadcrumbSeparator />
      <BreadcrumbItem><BreadcrumbLink href="#">Components</BreadcrumbLink></BreadcrumbItem><BreadcrumbSeparator />
      <BreadcrumbItem><BreadcrumbPage>Breadcrumb</BreadcrumbPage></BreadcrumbItem>
    </BreadcrumbList></Breadcrumb>
    <Pagination><PaginationContent>
      <PaginationItem><PaginationPrevious onClick={() => setPage((p) => Math.max(1, p - 1))} /></PaginationItem>
      {[1, 2, 3].map((n) => <PaginationItem key={n}><PaginationLink isActive={n === page} onClick={() => setPage(n)}>{n}</PaginationLink></PaginationItem>)}
      <PaginationItem><PaginationEllipsis /></PaginationItem>
      <PaginationItem><PaginationNext id="next-page" onClick={() => setPage((p) => p + 1)} /></PaginationItem>
    </PaginationContent></Pagination>
    <NavigationMenu><NavigationMenuList>
      <NavigationMenuItem><NavigationMenuTrigger>Getting started</NavigationMenuTrigger>
        <NavigationMenuContent><ul className="grid w-[400px] gap-3 p-4"><li><NavigationMenuLink href="#">Introduction</NavigationMenuLink></li><li>Installation</li></ul></NavigationMenuContent></NavigationMenuItem>
      <NavigationMenuItem><NavigationMenuLink className={navigationMenuTriggerStyle()} href="#">Docs</NavigationMenuLink></NavigationMenuItem>
    </NavigationMenuList></NavigationMenu>
    <Menubar>
      <MenubarMenu><MenubarTrigger id="file-menu">File</MenubarTrigger>
        <MenubarContent><MenubarItem>New Tab <MenubarShortcut>⌘T</MenubarShortcut></MenubarItem><MenubarItem disabled>New Window</MenubarItem><MenubarSeparator />
          <MenubarCheckboxItem checked={ruler} onCheckedChange={setRuler}>Show ruler</MenubarCheckboxItem></MenubarContent></MenubarMenu>
      <MenubarMenu><MenubarTrigger>Edit</MenubarTrigger><MenubarContent><MenubarItem>Undo</MenubarItem></MenubarContent></MenubarMenu>
    </Menubar>
    <ContextMenu><ContextMenuTrigger id="context-area" className="flex h-24 w-72 items-center justify-center rounded-md border border-dashed text-sm">Right click here</ContextMenuTrigger>
      <ContextMenuContent className="w-64"><ContextMenuItem>Back <ContextMenuShortcut>⌘[</ContextMenuShortcut></ContextMenuItem><ContextMenuItem>Reload</ContextMenuItem></ContextMenuContent></ContextMenu>
    <Button id="show-toast" variant="outline" onClick={() => toast({ title: "Scheduled: Catch up", description: "Friday, February 10, 2023 at 5:57 PM", action: <ToastAction altText="Undo">Undo</ToastAction> })}>Show toast</Button>
    <Toaster />
  </div>;
}
