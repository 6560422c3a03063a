import { useState } from "react";
import { Tabs, TabsContent, TabsList, TabsTrigger } from "@/components/ui/tabs";
import { Switch } from "@/components/ui/switch";
import { Slider } from "@/components/ui/slider";
import { Separator } from "@/components/ui/separator";
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
    <TabsContent value="general"><Switch id="n" checked={notify} onCheckedChange={setNotify} /><Separator />
      <RadioGroup value={theme} onValueChange={(v) => setTheme(v as Theme)}><RadioGroupItem value="light" /><RadioGroupItem value="dark" /></RadioGroup>
      <Textarea placeholder="Bio" /></TabsContent>
    <TabsContent value="sound"><Slider value={volume} onValueChange={setVolume} max={100} step={1} /><Progress value={volume[0]} /></TabsContent>
  </Tabs>;
}
