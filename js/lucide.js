// lucide-react for the player page, with its icons made on first use. The package
// defines well over a thousand icon components when it loads; an artifact uses a
// dozen. Here each icon is kept as the JSON text of its drawing, and its component
// is made, once, when the artifact first asks for its name.
//
// The icons arrive apart from this file (lucide-icons.js, made by js/build.mjs), all of
// them or only those an artifact names, each by a call of kelmoLucideIcon.
import createLucideIcon from "lucide-react/dist/esm/createLucideIcon.mjs";
import Icon from "lucide-react/dist/esm/Icon.mjs";
import { LucideProvider, useLucideContext } from "lucide-react/dist/esm/context.mjs";

// icons: icon file name -> JSON text of the icon's data ({name, size, node})
// names: export name ("Activity", "ActivityIcon", "LucideActivity") -> file name
// listed: the names of the package's `icons` export -> file name
const table = { icons: {}, names: {}, listed: {} };
const made = new Map();

window.kelmoLucideIcon = (file, names, json) => {
  table.icons[file] = json;
  for (const name of names)
    table.names[name] = file;
};
window.kelmoLucideListed = (names) => {
  for (const name of names)
    if (Object.prototype.hasOwnProperty.call(table.names, name))
      table.listed[name] = table.names[name];
};

function iconNamed(name, names) {
  if (typeof name !== "string" || !Object.prototype.hasOwnProperty.call(names, name))
    return undefined;
  const file = names[name];
  if (!made.has(file))
    made.set(file, createLucideIcon(JSON.parse(table.icons[file])));
  return made.get(file);
}

// A module namespace whose icon properties are made when read. `fixed` holds what is
// not an icon; `names` the icon names it answers, as they stand when asked.
function lazyNamespace(fixed, names) {
  const isIcon = (key) =>
    typeof key === "string" && !(key in fixed) && Object.prototype.hasOwnProperty.call(names, key);
  return new Proxy(fixed, {
    has: (target, key) => key in target || isIcon(key),
    get: (target, key) => (isIcon(key) ? iconNamed(key, names) : target[key]),
    ownKeys: (target) => [...Reflect.ownKeys(target), ...Object.keys(names)],
    getOwnPropertyDescriptor(target, key) {
      if (!isIcon(key))
        return Reflect.getOwnPropertyDescriptor(target, key);
      return { value: iconNamed(key, names), enumerable: true, configurable: true, writable: false };
    },
  });
}

const icons = lazyNamespace({}, table.listed);

const registry = (window.kelmoLibraries = window.kelmoLibraries || {});
registry["lucide-react"] = lazyNamespace(
  { __esModule: true, createLucideIcon, Icon, LucideProvider, useLucideContext, icons },
  table.names);
