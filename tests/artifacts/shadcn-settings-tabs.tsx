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

type Theme = "light" | "dark" | "system";

export default function Settings() {
  const [volume, setVolume] = useState<number[]>([40]);
  const [notify, setNotify] = useState<boolean>(true);
  const [theme, setTheme] = useState<Theme>("system");
  return (
    <div className="mx-auto max-w-2xl p-6">
      <div className="mb-4 flex items-center gap-2"><h1 className="text-3xl font-bold">Settings</h1><Badge variant="secondary">Beta</Badge></div>
      <Tabs defaultValue="general" className="w-full">
        <TabsList className="grid w-full grid-cols-3">
          <TabsTrigger value="general">General</TabsTrigger>
          <TabsTrigger value="sound">Sound</TabsTrigger>
          <TabsTrigger value="about">About</TabsTrigger>
        </TabsList>
        <TabsContent value="general">
          <Card>
            <CardHeader><CardTitle>General</CardTitle><CardDescription>How the app behaves.</CardDescription></CardHeader>
            <CardContent className="space-y-4">
              <div className="flex items-center justify-between"><Label htmlFor="n">Notifications</Label><Switch id="n" checked={notify} onCheckedChange={setNotify} /></div>
              <Separator />
              <RadioGroup value={theme} onValueChange={(v) => setTheme(v as Theme)}>
                {(["light", "dark", "system"] as Theme[]).map((t) => (
                  <div key={t} className="flex items-center space-x-2"><RadioGroupItem value={t} id={t} /><Label htmlFor={t}>{t}</Label></div>
                ))}
              </RadioGroup>
              <Textarea placeholder="Bio" />
            </CardContent>
          </Card>
        </TabsContent>
        <TabsContent value="sound">
          <Slider value={volume} onValueChange={setVolume} max={100} step={1} />
          <Progress value={volume[0]} className="mt-4" />
        </TabsContent>
        <TabsContent value="about">Version 1.0</TabsContent>
      </Tabs>
    </div>
  );
}
