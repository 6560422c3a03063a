// Tailwind for the player page, generated in the page by Twind with its Tailwind
// v3 preset: utilities, variants (hover:, focus:, md:, dark:, group-, peer-),
// arbitrary values and the opacity utilities of v3 (bg-opacity-50). A
// MutationObserver on the document turns every class that appears, also one built
// at run time, into its rule before the next paint.
//
// What Tailwind 3.3 and 3.4 added and the preset lacks is added here: size-*, the
// dynamic viewport units (h-dvh), w-[--var] for w-[var(--var)], has-[…]: and *:,
// the logical properties (ms-2, start-0, rounded-s, border-e), line-clamp-* and
// text-balance.
//
// The theme adds the colour tokens and radius of the shadcn/ui conventions
// (bg-background, text-muted-foreground, border-input, ring-ring, rounded-lg,
// bg-sidebar, fill-chart-1 …), backed by CSS variables that an artifact may
// override.
import { arbitrary, install, match, matchColor, matchTheme, toCSS } from "@twind/core";
import presetAutoprefix from "@twind/preset-autoprefix";
import presetTailwind from "@twind/preset-tailwind";

const themeVariables = `
:root {
  --background: 0 0% 100%;
  --foreground: 222.2 84% 4.9%;
  --card: 0 0% 100%;
  --card-foreground: 222.2 84% 4.9%;
  --popover: 0 0% 100%;
  --popover-foreground: 222.2 84% 4.9%;
  --primary: 222.2 47.4% 11.2%;
  --primary-foreground: 210 40% 98%;
  --secondary: 210 40% 96.1%;
  --secondary-foreground: 222.2 47.4% 11.2%;
  --muted: 210 40% 96.1%;
  --muted-foreground: 215.4 16.3% 46.9%;
  --accent: 210 40% 96.1%;
  --accent-foreground: 222.2 47.4% 11.2%;
  --destructive: 0 84.2% 60.2%;
  --destructive-foreground: 210 40% 98%;
  --border: 214.3 31.8% 91.4%;
  --input: 214.3 31.8% 91.4%;
  --ring: 222.2 84% 4.9%;
  --radius: 0.5rem;
  --sidebar-background: 0 0% 98%;
  --sidebar-foreground: 240 5.3% 26.1%;
  --sidebar-primary: 240 5.9% 10%;
  --sidebar-primary-foreground: 0 0% 98%;
  --sidebar-accent: 240 4.8% 95.9%;
  --sidebar-accent-foreground: 240 5.9% 10%;
  --sidebar-border: 220 13% 91%;
  --sidebar-ring: 217.2 91.2% 59.8%;
  --chart-1: 12 76% 61%;
  --chart-2: 173 58% 39%;
  --chart-3: 197 37% 24%;
  --chart-4: 43 74% 66%;
  --chart-5: 27 87% 67%;
}
.dark {
  --background: 222.2 84% 4.9%;
  --foreground: 210 40% 98%;
  --card: 222.2 84% 4.9%;
  --card-foreground: 210 40% 98%;
  --popover: 222.2 84% 4.9%;
  --popover-foreground: 210 40% 98%;
  --primary: 210 40% 98%;
  --primary-foreground: 222.2 47.4% 11.2%;
  --secondary: 217.2 32.6% 17.5%;
  --secondary-foreground: 210 40% 98%;
  --muted: 217.2 32.6% 17.5%;
  --muted-foreground: 215 20.2% 65.1%;
  --accent: 217.2 32.6% 17.5%;
  --accent-foreground: 210 40% 98%;
  --destructive: 0 62.8% 30.6%;
  --destructive-foreground: 210 40% 98%;
  --border: 217.2 32.6% 17.5%;
  --input: 217.2 32.6% 17.5%;
  --ring: 212.7 26.8% 83.9%;
  --sidebar-background: 240 5.9% 10%;
  --sidebar-foreground: 240 4.8% 95.9%;
  --sidebar-primary: 224.3 76.3% 48%;
  --sidebar-primary-foreground: 0 0% 100%;
  --sidebar-accent: 240 3.7% 15.9%;
  --sidebar-accent-foreground: 240 4.8% 95.9%;
  --sidebar-border: 240 3.7% 15.9%;
  --sidebar-ring: 217.2 91.2% 59.8%;
  --chart-1: 220 70% 50%;
  --chart-2: 160 60% 45%;
  --chart-3: 30 80% 55%;
  --chart-4: 280 65% 60%;
  --chart-5: 340 75% 55%;
}
@keyframes kelmo-enter { from { opacity: 0; transform: scale(0.97); } }
@keyframes kelmo-accordion-down { from { height: 0; } to { height: var(--radix-accordion-content-height); } }
@keyframes kelmo-accordion-up { from { height: var(--radix-accordion-content-height); } to { height: 0; } }
`;

function token(name) {
  return `hsl(var(--${name}) / <alpha-value>)`;
}

function pair(name) {
  return { DEFAULT: token(name), foreground: token(`${name}-foreground`) };
}

const side = { s: "start", e: "end" };

// Utilities that take a length or a colour: given a variable, Tailwind 3 takes it
// for the colour, and so does the rule below.
const colourUtilities = new RegExp(
  "^(bg|text|border(-[xytrblse])?|outline|ring(-offset)?|decoration|fill|stroke|divide|accent" +
  "|caret|placeholder|from|via|to)$");

// Tried before the preset's rules.
const rules = [
  // w-[--sidebar-width] is w-[var(--sidebar-width)]; bg-[var(--brand)] is a colour.
  [/^(-?[a-z][\w-]*?)-\[(?:(--[\w-]+)|var\((--[\w-]+)\))\]$/, (found, context) => {
    const [, utility, bare, named] = found;
    const value = `var(${bare || named})`;
    if (colourUtilities.test(utility))
      return context.r(`${utility}-[color:${value}]`, found.dark);
    return bare && context.r(`${utility}-[${value}]`, found.dark);
  }],
  matchTheme("size-", "size", ({ _ }) => ({ width: _, height: _ })),
  matchTheme("-?m([se])-", "margin", ({ 1: edge, _ }) => ({ [`margin-inline-${side[edge]}`]: _ })),
  matchTheme("p([se])-", "padding", ({ 1: edge, _ }) => ({ [`padding-inline-${side[edge]}`]: _ })),
  matchTheme("-?(start|end)-", "inset", ({ 1: edge, _ }) => ({ [`inset-inline-${edge}`]: _ })),
  matchTheme("-?scroll-m([se])-", "scrollMargin",
    ({ 1: edge, _ }) => ({ [`scroll-margin-inline-${side[edge]}`]: _ })),
  matchTheme("scroll-p([se])-", "padding",
    ({ 1: edge, _ }) => ({ [`scroll-padding-inline-${side[edge]}`]: _ })),
  // rounded-s rounds both corners at the start; rounded-se the one at block start, inline end.
  matchTheme("rounded-([se][se]?)(?:$|-)", "borderRadius", ({ 1: corners, _ }) => {
    const pairs = corners.length === 2 ? [corners] : [`s${corners}`, `e${corners}`];
    return Object.fromEntries(
      pairs.map(([block, inline]) => [`border-${side[block]}-${side[inline]}-radius`, _]));
  }),
  matchColor("border-([se])-",
    { section: "borderColor", opacityVariable: "--tw-border-opacity" },
    ({ 1: edge, _ }) => toCSS(`border-inline-${side[edge]}-color`, _)),
  matchTheme("border-([se])(?:$|-)", "borderWidth",
    ({ 1: edge, _ }) => ({ [`border-inline-${side[edge]}-width`]: _ })),
  match("(float|clear)-(start|end)",
    ({ 1: property, 2: edge }) => ({ [property]: `inline-${edge}` })),
  match("line-clamp-none", {
    overflow: "visible", display: "block",
    "-webkit-box-orient": "horizontal", "-webkit-line-clamp": "none",
  }),
  matchTheme("line-clamp-", "lineClamp", ({ _ }) => ({
    overflow: "hidden", display: "-webkit-box",
    "-webkit-box-orient": "vertical", "-webkit-line-clamp": _,
  })),
  match("text-(wrap|nowrap|balance|pretty)", "textWrap"),
  match("origin-(\\[.+\\])",
    ({ 1: value }, context) => ({ transformOrigin: arbitrary(value, "", context) })),
];

const variants = [
  // Through the preset's group and peer variants also group-has-[…] and peer-has-[…].
  ["has-", ({ $$ }, context) => {
    const selector = $$ && arbitrary($$, "", context);
    return selector && `&:has(${selector})`;
  }],
  ["\\*", "&>*"],
];

const viewportHeights = { svh: "100svh", lvh: "100lvh", dvh: "100dvh" };

// First in <head>, so that an artifact's own stylesheet wins over the defaults.
const style = document.createElement("style");
style.id = "kelmo-tailwind-theme";
style.textContent = themeVariables;
document.head.prepend(style);

const tw = install({
  presets: [presetAutoprefix(), presetTailwind()],
  // dark: follows a "dark" class on an ancestor, as shadcn/ui's theme toggles do; the
  // player itself is always light.
  darkMode: "class",
  hash: false,
  rules,
  variants,
  theme: {
    extend: {
      colors: {
        border: token("border"),
        input: token("input"),
        ring: token("ring"),
        background: token("background"),
        foreground: token("foreground"),
        primary: pair("primary"),
        secondary: pair("secondary"),
        destructive: pair("destructive"),
        muted: pair("muted"),
        accent: pair("accent"),
        popover: pair("popover"),
        card: pair("card"),
        sidebar: {
          DEFAULT: token("sidebar-background"),
          foreground: token("sidebar-foreground"),
          primary: pair("sidebar-primary"),
          accent: pair("sidebar-accent"),
          border: token("sidebar-border"),
          ring: token("sidebar-ring"),
        },
        chart: Object.fromEntries([1, 2, 3, 4, 5].map((n) => [n, token(`chart-${n}`)])),
      },
      borderRadius: {
        lg: "var(--radius)",
        md: "calc(var(--radius) - 2px)",
        sm: "calc(var(--radius) - 4px)",
      },
      animation: {
        in: "kelmo-enter 150ms ease-out",
        "accordion-down": "kelmo-accordion-down 0.2s ease-out",
        "accordion-up": "kelmo-accordion-up 0.2s ease-out",
      },
      size: ({ theme }) =>
        ({ ...theme("flexBasis"), min: "min-content", max: "max-content", fit: "fit-content" }),
      height: viewportHeights,
      minHeight: ({ theme }) => ({ ...theme("spacing"), ...viewportHeights }),
      maxHeight: viewportHeights,
      width: { svw: "100svw", lvw: "100lvw", dvw: "100dvw" },
      minWidth: ({ theme }) => theme("spacing"),
      maxWidth: ({ theme }) => theme("spacing"),
      lineClamp: Object.fromEntries([1, 2, 3, 4, 5, 6].map((n) => [n, String(n)])),
    },
  },
});

// A script that reads a style right after adding an element runs before the
// observer has seen the element's classes (Radix's popper copies the z-index of a
// menu that just mounted to its wrapper). Reading a computed style first makes the
// rules of the classes added or changed since.
const unseen = new MutationObserver(() => {});
unseen.observe(document.documentElement,
  { subtree: true, childList: true, attributeFilter: ["class"] });

function makeRules(element) {
  const classes = element.getAttribute("class");
  if (classes)
    tw(classes);
}

const computedStyle = window.getComputedStyle;
window.getComputedStyle = function getComputedStyle(...args) {
  for (const record of unseen.takeRecords()) {
    if (record.type === "attributes")
      makeRules(record.target);
    for (const node of record.addedNodes) {
      if (node.nodeType === Node.ELEMENT_NODE) {
        makeRules(node);
        node.querySelectorAll("[class]").forEach(makeRules);
      }
    }
  }
  return computedStyle.apply(window, args);
};
