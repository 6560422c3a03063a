import * as Icons from "lucide-react";
import Lucide from "lucide-react";
import { HomeIcon, LucideStar, Trash2, CheckCircle, AlertTriangle, Edit, Loader2 } from "lucide-react";

export default function IconGallery() {
  return <div className="flex gap-3">
    {["Heart", "Sun"].map((name) => { const Icon = Icons[name]; return <Icon key={name} aria-label={name} />; })}
    <HomeIcon /><LucideStar /><Trash2 /><CheckCircle /><AlertTriangle /><Edit /><Loader2 className="animate-spin" />
    <Lucide.Rocket /><Lucide.SomeIconFromANewerRelease />
  </div>;
}
