import { useState } from "react";
import { Tabs, TabsContent, TabsList, TabsTrigger } from "@/components/ui/tabs";
import { Card, CardContent, CardHeader, CardTitle, CardDescription } from "@/components/ui/card";
import { Switch } from "@/components/ui/switch";
import { Slider } from "@/components/ui/slider";
import { Label } from "@/components/ui/label";
import { Separator } from "@/components/ui/separator";
import { Badge } from "@/components/ui/badge";
import { Progress } from "@/components/ui/progress";
import { RadioGroup, RadioGroupItem } from "@/components/ui/radio-group";
import { Textarea } from "@/components/ui/textarea";

type Theme = "light" | "dark";

export default function Settings() {
  const [volume, setVolume] = useState<number[]>([40]);
  const [notify, setNotify] = useState<boolean>(true);
  const [theme, setTheme] = useState<Theme>("light");
  return <Tabs defaultValue="general">
    <TabsList><TabsTrigger value="general">General</TabsTrigger><TabsTrigger value="sound">Sound</TabsTrigger></TabsList>
    <TabsContent value="general"><Card>
      <CardHeader><CardTitle>General <Badge variant="secondary">Beta</Badge></CardTitle><CardDescription>How the app behaves.</CardDescription></CardHeader>
      <CardContent><Label htmlFor="n">Notifications</Label><Switch id="n" checked={notify} onCheckedChange={setNotify} /><Separator />
        <RadioGroup value={theme} onValueChange={(v) => setTheme(v as Theme)}><RadioGroupItem value="light" /><RadioGroupItem value="dark" /></RadioGroup>
        <Textarea placeholder="Bio" /></CardContent>
    </Card></TabsContent>
    <TabsContent value="sound"><Slider value={volume} onValueChange={setVolume} max={100} step={1} /><Progress value={volume[0]} /></TabsContent>
  </Tabs>;
}
