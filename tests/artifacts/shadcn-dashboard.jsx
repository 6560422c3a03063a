import { Bar, BarChart, CartesianGrid, XAxis } from "recharts";
import { ChartContainer, ChartLegend, ChartLegendContent, ChartTooltip, ChartTooltipContent } from "@/components/ui/chart";
import { ResizableHandle, ResizablePanel, ResizablePanelGroup } from "@/components/ui/resizable";
import { Sidebar, SidebarContent, SidebarFooter, SidebarGroup, SidebarGroupContent, SidebarGroupLabel, SidebarHeader, SidebarInset, SidebarMenu, SidebarMenuBadge, SidebarMenuButton, SidebarMenuItem, SidebarProvider, SidebarRail, SidebarSeparator, SidebarTrigger, useSidebar } from "@/components/ui/sidebar";
import { Home, Inbox, Calendar, Search, Settings } from "lucide-react";

const items = [
  { title: "Home", icon: Home }, { title: "Inbox", icon: Inbox, badge: 24 },
  { title: "Calendar", icon: Calendar }, { title: "Search", icon: Search }, { title: "Settings", icon: Settings },
];
const chartData = [
  { month: "January", desktop: 186, mobile: 80 }, { month: "February", desktop: 305, mobile: 200 },
  { month: "March", desktop: 237, mobile: 120 }, { month: "April", desktop: 73, mobile: 190 },
  { month: "May", desktop: 209, mobile: 130 }, { month: "June", desktop: 214, mobile: 140 },
];
const chartConfig = {
  desktop: { label: "Desktop", color: "hsl(var(--chart-1))" },
  mobile: { label: "Mobile", color: "var(--chart-2)" },
};

function SidebarState() {
  const { state } = useSidebar();
  return <span id="sidebar-state" className="text-sm text-muted-foreground">{state}</span>;
}

export default function Dashboard() {
  return <SidebarProvider>
    <Sidebar collapsible="icon">
      <SidebarHeader><span className="px-2 text-sm font-semibold">Acme Inc</span></SidebarHeader>
      <SidebarSeparator />
      <SidebarContent>
        <SidebarGroup><SidebarGroupLabel>Application</SidebarGroupLabel><SidebarGroupContent><SidebarMenu>
          {items.map((item, i) => <SidebarMenuItem key={item.title}>
            <SidebarMenuButton isActive={i === 0} tooltip={item.title}><item.icon /><span>{item.title}</span></SidebarMenuButton>
            {item.badge && <SidebarMenuBadge>{item.badge}</SidebarMenuBadge>}
          </SidebarMenuItem>)}
        </SidebarMenu></SidebarGroupContent></SidebarGroup>
      </SidebarContent>
      <SidebarFooter><SidebarMenu><SidebarMenuItem><SidebarMenuButton><Settings /><span>Account</span></SidebarMenuButton></SidebarMenuItem></SidebarMenu></SidebarFooter>
      <SidebarRail />
    </Sidebar>
    <SidebarInset>
      <header className="flex h-14 items-center gap-2 border-b px-4"><SidebarTrigger id="sidebar-trigger" /><h1 className="font-semibold">Dashboard</h1><SidebarState /></header>
      <div className="space-y-6 p-4">
        <ChartContainer config={chartConfig} className="min-h-[200px] w-full max-w-xl">
          <BarChart accessibilityLayer data={chartData}>
            <CartesianGrid vertical={false} />
            <XAxis dataKey="month" tickLine={false} tickMargin={10} axisLine={false} tickFormatter={(value) => value.slice(0, 3)} />
            <ChartTooltip content={<ChartTooltipContent />} />
            <ChartLegend content={<ChartLegendContent />} />
            <Bar dataKey="desktop" fill="var(--color-desktop)" radius={4} />
            <Bar dataKey="mobile" fill="var(--color-mobile)" radius={4} />
          </BarChart>
        </ChartContainer>
        <ResizablePanelGroup direction="horizontal" className="max-w-xl rounded-lg border" style={{ height: 200 }}>
          <ResizablePanel defaultSize={40}><div className="flex h-full items-center justify-center p-6"><span className="font-semibold">One</span></div></ResizablePanel>
          <ResizableHandle withHandle />
          <ResizablePanel defaultSize={60}>
            <ResizablePanelGroup direction="vertical">
              <ResizablePanel defaultSize={25}><div className="flex h-full items-center justify-center p-6"><span className="font-semibold">Two</span></div></ResizablePanel>
              <ResizableHandle />
              <ResizablePanel defaultSize={75}><div className="flex h-full items-center justify-center p-6"><span className="font-semibold">Three</span></div></ResizablePanel>
            </ResizablePanelGroup>
          </ResizablePanel>
        </ResizablePanelGroup>
      </div>
    </SidebarInset>
  </SidebarProvider>;
}
