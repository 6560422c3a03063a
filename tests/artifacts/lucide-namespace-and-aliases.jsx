import * as Icons from "lucide-react";
import Lucide, { icons, createLucideIcon } from "lucide-react";
import { HomeIcon, LucideStar, Trash2, CheckCircle, AlertTriangle, TriangleAlert, Edit, Loader2, IconFromTheFuture } from "lucide-react";

const Dot = createLucideIcon("dot", [["circle", { cx: 12, cy: 12, r: 4, key: "c" }]]);

export default function IconGallery() {
  return <div id="icons" className="flex gap-3" data-names={Object.keys(Icons).length} data-listed={Object.keys(icons).length}>
    {["Heart", "Sun"].map((name) => { const Icon = Icons[name]; return <Icon key={name} aria-label={name} />; })}
    <HomeIcon /><LucideStar /><Trash2 /><CheckCircle /><AlertTriangle id="old" /><TriangleAlert id="new" /><Edit /><Loader2 className="animate-spin" />
    <icons.Heart id="heart" /><Lucide.Rocket id="rocket" /><Dot id="dot" /><Lucide.SomeIconFromANewerRelease /><IconFromTheFuture size={32} />
  </div>;
}
