import * as Icons from "lucide-react";
import Lucide from "lucide-react";
import { HomeIcon, LucideStar, Trash2, CheckCircle, AlertTriangle, Edit, Loader2 } from "lucide-react";

const names = ["Heart", "Sun", "Moon", "Cloud", "Camera"];

export default function IconGallery() {
  return (
    <div className="p-8">
      <h2 className="mb-4 text-lg font-semibold">Icons</h2>
      <div className="flex flex-wrap gap-3">
        {names.map((name) => {
          const Icon = Icons[name];
          return <Icon key={name} className="h-6 w-6 text-indigo-500" aria-label={name} />;
        })}
        <HomeIcon /><LucideStar /><Trash2 /><CheckCircle /><AlertTriangle /><Edit />
        <Loader2 className="animate-spin" />
        <Lucide.Rocket /><Lucide.SomeIconFromANewerRelease />
      </div>
    </div>
  );
}
