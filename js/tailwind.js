// Tailwind for the player page, generated in the page by Twind with its Tailwind
// v3 preset: utilities, variants (hover:, focus:, md:, dark:, group-, peer-),
// arbitrary values and the opacity utilities of v3 (bg-opacity-50). A
// MutationObserver on the document turns every class that appears, also one built
// at run time, into its rule before the next paint.
//
// The theme adds the colour tokens and radius of the shadcn/ui conventions
// (bg-background, text-muted-foreground, border-input, ring-ring, rounded-lg …),
// backed by CSS variables that an artifact may override.
import { install } from "@twind/core";
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

// First in <head>, so that an artifact's own stylesheet wins over the defaults.
const style = document.createElement("style");
style.id = "kelmo-tailwind-theme";
style.textContent = themeVariables;
document.head.prepend(style);

install({
  presets: [presetAutoprefix(), presetTailwind()],
  hash: false,
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
    },
  },
});
