import { useState } from "react";
import { Table, TableBody, TableCaption, TableCell, TableHead, TableHeader, TableRow } from "@/components/ui/table";
import { Button } from "@/components/ui/button";
import { Badge } from "@/components/ui/badge";
import { Avatar, AvatarFallback, AvatarImage } from "@/components/ui/avatar";
import { DropdownMenu, DropdownMenuContent, DropdownMenuItem, DropdownMenuLabel, DropdownMenuSeparator, DropdownMenuTrigger } from "@/components/ui/dropdown-menu";
import { Tooltip, TooltipContent, TooltipProvider, TooltipTrigger } from "@/components/ui/tooltip";
import { ScrollArea } from "@/components/ui/scroll-area";
import { Skeleton } from "@/components/ui/skeleton";
import { MoreHorizontal } from "lucide-react";
import { cn } from "@/lib/utils";

const invoices = [{ id: "INV001", status: "Paid", amount: 250 }, { id: "INV002", status: "Pending", amount: 150 }];

export default function Invoices() {
  const [selected, setSelected] = useState(null);
  return <TooltipProvider>
    <Avatar><AvatarImage src="" alt="" /><AvatarFallback>KL</AvatarFallback></Avatar><Skeleton className="h-4 w-[200px]" />
    <ScrollArea className="h-72 rounded-md border"><Table><TableCaption>Recent invoices</TableCaption>
      <TableHeader><TableRow><TableHead>Invoice</TableHead><TableHead>Status</TableHead><TableHead className="text-right">Amount</TableHead><TableHead /></TableRow></TableHeader>
      <TableBody>{invoices.map((inv) => (
        <TableRow key={inv.id} className={cn(selected === inv.id && "bg-muted")} onClick={() => setSelected(inv.id)}>
          <TableCell>{inv.id}</TableCell><TableCell><Badge variant={inv.status === "Paid" ? "default" : "outline"}>{inv.status}</Badge></TableCell>
          <TableCell className="text-right">${inv.amount.toFixed(2)}</TableCell>
          <TableCell><DropdownMenu>
            <DropdownMenuTrigger asChild><Button variant="ghost" size="icon"><MoreHorizontal className="h-4 w-4" /></Button></DropdownMenuTrigger>
            <DropdownMenuContent><DropdownMenuLabel>Actions</DropdownMenuLabel><DropdownMenuSeparator /><DropdownMenuItem>Copy ID</DropdownMenuItem></DropdownMenuContent>
          </DropdownMenu></TableCell>
        </TableRow>))}
      </TableBody>
    </Table></ScrollArea>
    <Tooltip><TooltipTrigger asChild><Button variant="link">Help</Button></TooltipTrigger><TooltipContent>Last 30 days</TooltipContent></Tooltip>
  </TooltipProvider>;
}
