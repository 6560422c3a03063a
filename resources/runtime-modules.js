// Kelmo player: the modules an artifact may import.
//
// Each entry maps an import specifier to the runtime files that provide it and to
// a function that answers its exports once those files have run. Files are
// top-level resources served beside the player page; they are loaded at most
// once, in the order listed, and only when a module that needs them is imported
// (or needed by the player itself, which renders with React).
//
// Library bundles (lib-*.js, kelmo-*.js) are built from npm packages by
// js/build.mjs; each registers its modules on window.kelmoLibraries under their
// specifiers. To offer another library, add it to a bundle there and an entry here.
//
// Entry fields: files, exports, and optionally
//   hidden:   an alias, left out of the list shown for an unknown import;
//   subpaths: "lodash/debounce" answers the export "debounce" of "lodash".
(function () {
  "use strict";

  const react = ["react.production.min.js"];
  const reactDom = ["react.production.min.js", "react-dom.production.min.js"];

  // The automatic JSX runtime over React's UMD build, which ships none: the key
  // travels as a separate argument and everything else, children included, in props.
  function jsxRuntime(React) {
    function jsx(type, props, key) {
      return React.createElement(type, key === undefined ? props : { ...props, key });
    }
    return { jsx, jsxs: jsx, jsxDEV: jsx, Fragment: React.Fragment };
  }

  // A bundled module as an ES module namespace for the compiled artifact. A module
  // without a default export answers itself as its default, so that
  // `import d3 from "d3"` works like `import * as d3 from "d3"`.
  function namespaceOf(module) {
    const namespace = { __esModule: true };
    for (const name of Object.keys(module))
      namespace[name] = module[name];
    if (namespace.default === undefined)
      namespace.default = namespace;
    return namespace;
  }

  function registered(specifier) {
    const module = window.kelmoLibraries && window.kelmoLibraries[specifier];
    if (!module)
      throw new Error(`The bundle for "${specifier}" did not register it`);
    return module;
  }

  function bundled(specifier) {
    return () => namespaceOf(registered(specifier));
  }

  // ---- lucide-react: unknown icon names -------------------------------------------

  // Icons come and go between releases; an artifact written against another one
  // gets a visible placeholder for an icon this release lacks, and a warning,
  // instead of a crash of the whole render.
  function iconsWithPlaceholders(icons) {
    const React = window.React;
    const placeholders = new Map();
    function placeholder(name) {
      if (!placeholders.has(name)) {
        console.warn(`lucide-react has no icon "${name}"; showing a placeholder instead.`);
        const Placeholder = React.forwardRef(function MissingIcon(
          { size = 24, color = "currentColor", strokeWidth = 2, className, ...rest }, ref) {
          return React.createElement("svg", {
            ref, width: size, height: size, viewBox: "0 0 24 24", fill: "none",
            stroke: color, strokeWidth, strokeLinecap: "round", strokeLinejoin: "round",
            className: ["lucide", className].filter(Boolean).join(" "),
            "data-kelmo-missing-icon": name, ...rest,
          },
          React.createElement("rect", { x: 3, y: 3, width: 18, height: 18, rx: 2, strokeDasharray: "3 3" }),
          React.createElement("path", { d: "M9.5 9.5a2.5 2.5 0 1 1 3.5 2.3c-.6.3-1 .8-1 1.4V14" }),
          React.createElement("circle", { cx: 12, cy: 17, r: 0.5 }));
        });
        Placeholder.displayName = name;
        placeholders.set(name, Placeholder);
      }
      return placeholders.get(name);
    }
    const proxy = new Proxy(icons, {
      get(target, name) {
        if (name === "default")
          return proxy; // import Icons from "lucide-react"
        if (name in target || typeof name !== "string" || !/^[A-Z]/.test(name))
          return target[name];
        return placeholder(name);
      },
    });
    return proxy;
  }

  // ---- The table -------------------------------------------------------------------

  const modules = {
    "react": { files: react, exports: () => window.React },
    "react/jsx-runtime": { files: react, exports: () => jsxRuntime(window.React), hidden: true },
    "react/jsx-dev-runtime": { files: react, exports: () => jsxRuntime(window.React), hidden: true },
    "react-dom": { files: reactDom, exports: () => window.ReactDOM },
    "react-dom/client": {
      files: reactDom,
      exports: () => ({
        createRoot: window.ReactDOM.createRoot,
        hydrateRoot: window.ReactDOM.hydrateRoot,
      }),
    },
    "lucide-react": {
      // The icons come apart, all of them or only those the artifact names (runtime.js).
      files: [...react, "lib-lucide.js", "lucide-icons.js"],
      // Already a namespace, whose icons are made when first read: copying it would
      // make them all.
      exports: () => iconsWithPlaceholders(registered("lucide-react")),
    },
    "recharts": { files: [...reactDom, "lib-recharts.js"], exports: bundled("recharts") },
    "mathjs": { files: ["lib-mathjs.js"], exports: bundled("mathjs") },
    "lodash": { files: ["lib-lodash.js"], exports: bundled("lodash"), subpaths: true },
    "d3": { files: ["lib-d3.js"], exports: bundled("d3") },
    "three": { files: ["lib-three.js"], exports: bundled("three") },
    "papaparse": { files: ["lib-papaparse.js"], exports: bundled("papaparse") },
    "xlsx": { files: ["lib-xlsx.js"], exports: bundled("xlsx") },
    "chart.js": { files: [...reactDom, "lib-chartjs.js"], exports: bundled("chart.js") },
    "chart.js/auto": { files: [...reactDom, "lib-chartjs.js"], exports: bundled("chart.js/auto") },
    "react-chartjs-2": {
      files: [...reactDom, "lib-chartjs.js"],
      exports: bundled("react-chartjs-2"),
    },
    "tone": { files: ["lib-tone.js"], exports: bundled("tone") },
    "plotly": {
      files: ["plotly.min.js"],
      exports: () => namespaceOf({ default: window.Plotly, ...window.Plotly }),
    },
    "framer-motion": { files: [...reactDom, "lib-framer-motion.js"], exports: bundled("framer-motion") },
    "clsx": { files: ["lib-classnames.js"], exports: bundled("clsx") },
    "tailwind-merge": { files: ["lib-classnames.js"], exports: bundled("tailwind-merge") },
    "class-variance-authority": {
      files: ["lib-classnames.js"],
      exports: bundled("class-variance-authority"),
    },
    "uuid": { files: ["lib-uuid.js"], exports: bundled("uuid") },
    "@/lib/utils": { files: [...reactDom, "kelmo-ui.js"], exports: bundled("@/lib/utils") },
  };

  // Libraries bundled by groups (js/build.mjs): each specifier answers its namespace
  // once the group's files, and those they borrow from, have run.
  function offer(files, specifiers, options = {}) {
    for (const specifier of specifiers)
      modules[specifier] = { files, exports: bundled(specifier), ...options };
  }
  offer([...reactDom, "lib-dnd-kit.js"], ["@dnd-kit/core", "@dnd-kit/sortable", "@dnd-kit/utilities"]);
  offer([...reactDom, "lib-hello-pangea-dnd.js"], ["@hello-pangea/dnd"]);
  offer([...reactDom, "lib-react-dnd.js"], ["react-dnd", "react-dnd-html5-backend"]);
  offer(["lib-date-fns.js"], ["date-fns"], { subpaths: true });
  offer(["lib-dayjs.js"], ["dayjs"]);
  offer(["lib-dayjs.js"], [
    "advancedFormat", "customParseFormat", "duration", "isBetween", "isSameOrAfter",
    "isSameOrBefore", "isToday", "isoWeek", "localizedFormat", "relativeTime", "timezone",
    "utc", "weekOfYear", "weekday",
  ].map((plugin) => `dayjs/plugin/${plugin}`), { hidden: true });
  offer([...reactDom, "lib-day-picker.js"], ["react-day-picker"]);
  offer([...react, "lib-react-markdown.js"], ["react-markdown", "remark-gfm"]);
  offer(["lib-marked.js"], ["marked"]);
  offer(["lib-prism.js"], ["prismjs"]);
  offer([...react, "lib-state.js"], ["zustand", "jotai", "immer"]);
  offer([...react, "lib-state.js"], ["zustand/middleware", "zustand/shallow", "jotai/utils"],
    { hidden: true });
  offer([...reactDom, "lib-router.js"], ["react-router-dom"]);
  offer(["lib-zod.js"], ["zod"]);
  offer(["lib-yup.js"], ["yup"]);
  offer([...react, "lib-zod.js", "lib-yup.js", "lib-forms.js"],
    ["react-hook-form", "@hookform/resolvers/zod", "@hookform/resolvers/yup"]);
  offer([...reactDom, "lib-react-spring.js"], ["@react-spring/web"]);
  offer([...reactDom, "lib-confetti.js"], ["canvas-confetti", "react-confetti"]);
  offer([...reactDom, "lib-sonner.js"], ["sonner"]);
  offer(["lib-jspdf.js"], ["jspdf"]);
  offer(["lib-html2canvas.js"], ["html2canvas"]);
  offer(["lib-html-to-image.js"], ["html-to-image"]);
  offer([...react, "lib-katex.js"], ["katex", "react-katex", "remark-math", "rehype-katex"]);
  offer([...react, "lib-katex.js"], ["katex/contrib/auto-render", "katex/contrib/mhchem"],
    { hidden: true });
  offer(["lib-mermaid.js"], ["mermaid"]);
  offer([...reactDom, "lib-xyflow.js"], ["@xyflow/react"]);
  offer([...reactDom, "lib-reactflow.js"], ["reactflow"]);
  offer([...reactDom, "lib-three.js", "lib-react-three-fiber.js"], ["@react-three/fiber"]);
  offer([...reactDom, "lib-three.js", "lib-react-three-fiber.js", "lib-react-three-drei.js"],
    ["@react-three/drei"]);
  offer([...reactDom, "lib-styled-components.js"], ["styled-components"]);
  offer([...reactDom, "lib-headlessui.js"], ["@headlessui/react"]);
  offer([...react, "lib-syntax-highlighter.js"], ["react-syntax-highlighter"]);
  offer([...react, "lib-syntax-highlighter.js"], [
    "react-syntax-highlighter/dist/esm/styles/prism", "react-syntax-highlighter/dist/esm/styles/hljs",
  ], { hidden: true });
  offer([...reactDom, "lib-react-color.js"], ["react-color"]);
  // Analytics that only make sense on a deployed site: present, and doing nothing.
  const nothing = () => null;
  for (const specifier of ["@vercel/analytics", "@vercel/analytics/react", "@vercel/speed-insights",
    "@vercel/speed-insights/react", "@vercel/speed-insights/next", "@vercel/analytics/next"]) {
    modules[specifier] = {
      files: [],
      exports: () => ({ __esModule: true, Analytics: nothing, SpeedInsights: nothing,
        inject() {}, track() {}, injectSpeedInsights() {}, default: nothing }),
      hidden: true,
    };
  }
  offer(["lib-openai.js"], ["openai"]);
  offer(["lib-anthropic.js"], ["@anthropic-ai/sdk"]);
  offer(["lib-google-ai.js"], ["@google/generative-ai"]);
  offer([...react, "lib-zod.js", "lib-ai-sdk.js"], ["ai", "@ai-sdk/react"]);
  for (const set of ["ai", "bi", "bs", "cg", "ci", "di", "fa", "fa6", "fc", "fi", "go", "gr",
    "hi", "hi2", "im", "io", "io5", "lu", "md", "ri", "rx", "si", "sl", "tb", "tfi", "ti", "vsc", "wi"])
    offer([...react, `lib-react-icons-${set}.js`], [`react-icons/${set}`], { hidden: set !== "fa" });
  for (const set of ["24/outline", "24/solid", "20/solid", "16/solid"])
    offer([...react, `lib-heroicons-${set.replace("/", "-")}.js`], [`@heroicons/react/${set}`],
      { hidden: set !== "24/outline" });

  const threeAddons = [
    "controls/OrbitControls.js", "controls/TrackballControls.js", "geometries/RoundedBoxGeometry.js",
  ];
  for (const addon of threeAddons) {
    modules[`three/addons/${addon}`] = {
      files: ["lib-three.js", "lib-three-addons.js"],
      exports: bundled(`three/addons/${addon}`),
      hidden: true,
    };
  }

  // A shadcn/ui-style component or hook (js/ui, js/hooks). They share one bundle, which
  // is loaded to tell whether it has the one asked for; the components built on large
  // packages of their own come in a bundle each, after it (js/build.mjs).
  // Component name -> the other bundles its own borrows from.
  const ownBundles = {
    calendar: ["lib-day-picker.js"], carousel: [], chart: ["lib-recharts.js"], command: [], drawer: [],
    form: ["lib-zod.js", "lib-yup.js", "lib-forms.js"], "input-otp": [], resizable: [],
    sonner: ["lib-sonner.js"],
  };
  function uiEntry(path) {
    const specifier = `@/${path}`;
    const name = path.slice(path.lastIndexOf("/") + 1);
    const own = path.startsWith("components/") && Object.prototype.hasOwnProperty.call(ownBundles, name);
    return {
      files: [...reactDom, "kelmo-ui.js", ...(own ? [...ownBundles[name], `kelmo-ui-${name}.js`] : [])],
      exports: () => {
        const libraries = window.kelmoLibraries || {};
        if (!libraries[specifier]) {
          const kind = path.startsWith("hooks/") ? "hooks/" : "components/ui/";
          const offered = Object.keys(libraries)
            .filter((name) => name.startsWith(`@/${kind}`))
            .map((name) => name.slice(`@/${kind}`.length))
            .concat(kind === "components/ui/" ? Object.keys(ownBundles) : [])
            .sort();
          throw new Error(`Cannot resolve import "${specifier}": Kelmo has no ` +
            `@/${kind}${path.slice(kind.length)}. It has @/${kind}{${offered.join(",")}}.`);
        }
        return namespaceOf(libraries[specifier]);
      },
      hidden: true,
    };
  }

  // Other names artifacts use for the same modules.
  const aliases = {
    "lodash-es": "lodash",
    "plotly.js": "plotly",
    "plotly.js-dist": "plotly",
    "plotly.js-dist-min": "plotly",
    "plotly.js/dist/plotly": "plotly",
    "motion/react": "framer-motion",
    "chart.js/auto/auto.js": "chart.js/auto",
    "uuidv4": "uuid",
    "react-beautiful-dnd": "@hello-pangea/dnd",
    "react-router": "react-router-dom",
    "zod/v4": "zod",
    "@heroicons/react/outline": "@heroicons/react/24/outline",
    "@heroicons/react/solid": "@heroicons/react/24/solid",
    "react-three-fiber": "@react-three/fiber",
    "drei": "@react-three/drei",
    "react-syntax-highlighter/dist/cjs/styles/prism": "react-syntax-highlighter/dist/esm/styles/prism",
    "react-syntax-highlighter/dist/cjs/styles/hljs": "react-syntax-highlighter/dist/esm/styles/hljs",
  };
  const d3Parts = [
    "array", "axis", "brush", "chord", "color", "contour", "delaunay", "dispatch", "drag",
    "dsv", "ease", "fetch", "force", "format", "geo", "hierarchy", "interpolate", "path",
    "polygon", "quadtree", "random", "scale", "scale-chromatic", "selection", "shape", "time",
    "time-format", "timer", "transition", "zoom",
  ];
  for (const part of d3Parts)
    aliases[`d3-${part}`] = "d3";
  for (const [alias, target] of Object.entries(aliases))
    modules[alias] = { ...modules[target], hidden: true };

  // The stylesheet of a package (react-day-picker/style.css): applied when Kelmo ships
  // it (js/build.mjs copies the stylesheets of the packages it bundles, named
  // "css~<path with ~ for />"), and otherwise ignored with a warning, as is one of the
  // artifact's own project (./App.css), which the page does not have.
  const RUNTIME_URL = new URL(".", document.currentScript.src || location.href).href;
  const EMBEDDED_FILES = new Set(window.kelmoEmbeddedFiles || []);
  function stylesheetEntry(specifier) {
    return {
      files: [],
      exports: () => {
        const ignored = (why) =>
          console.warn(`The stylesheet "${specifier}" ${why}; the import is ignored.`);
        const file = "css~" + specifier.replace(/\?.*$/, "").split("/").join("~");
        if (/^[./~]/.test(specifier) || specifier.startsWith("@/")) {
          ignored("belongs to the artifact's own project, which Kelmo does not have");
        } else if (EMBEDDED_FILES.has(file)) {
          // Already on the page, which was exported with it.
        } else {
          const link = document.createElement("link");
          link.rel = "stylesheet";
          link.href = RUNTIME_URL + file;
          link.onerror = () => {
            link.remove();
            ignored("is not available in Kelmo");
          };
          document.head.appendChild(link);
        }
        return { __esModule: true, default: {} };
      },
      hidden: true,
    };
  }

  // The table entry for a specifier, creating entries for the spellings that map
  // onto a listed module; undefined when nothing provides it.
  function resolve(specifier) {
    if (Object.prototype.hasOwnProperty.call(modules, specifier))
      return modules[specifier];
    // A package from a CDN (esm.sh, jsDelivr, unpkg, Skypack, JSPM) that Kelmo ships is
    // the shipped one, whatever version the URL names.
    const cdn =
      /^https?:\/\/(?:esm\.sh|cdn\.jsdelivr\.net\/npm|unpkg\.com|cdn\.skypack\.dev|ga\.jspm\.io\/npm:)\/?((?:@[\w.-]+\/)?[\w.-]+)(?:@[^/?]*)?(\/[^?]*)?/
        .exec(specifier);
    if (cdn) {
      const subpath = (cdn[2] || "").replace(/^\/(?:\+esm|es\d+\/.*|dist\/.*\.m?js)$/, "");
      return (subpath && resolve(cdn[1] + subpath)) || resolve(cdn[1]);
    }
    let entry;
    const ui =
      /^(?:@\/|~\/|(?:\.{1,2}\/)+|\/)?(?:src\/)?(?:components\/)?(ui\/[\w-]+|hooks\/[\w-]+|lib\/utils)(?:\.[jt]sx?)?$/
        .exec(specifier);
    const three = /^three\/(?:examples\/jsm|addons)\/(.+?)(?:\.js)?$/.exec(specifier);
    if (/\.(?:css|scss|sass|less)(?:\?.*)?$/i.test(specifier)) {
      entry = stylesheetEntry(specifier);
    } else if (ui) {
      const path = ui[1].startsWith("ui/") ? `components/${ui[1]}` : ui[1];
      entry = modules[`@/${path}`] || (modules[`@/${path}`] = uiEntry(path));
    } else if (three && modules[`three/addons/${three[1]}.js`]) {
      entry = modules[`three/addons/${three[1]}.js`];
    } else {
      const slash = specifier.indexOf("/", specifier.startsWith("@") ? specifier.indexOf("/") + 1 : 0);
      const base = slash > 0 ? modules[specifier.slice(0, slash)] : undefined;
      const name = slash > 0 ? specifier.slice(slash + 1).replace(/\.js$/, "") : "";
      if (base && base.subpaths && /^\w+$/.test(name)) {
        entry = {
          files: base.files,
          exports: () => {
            const value = base.exports()[name];
            if (value === undefined)
              throw new Error(`"${specifier}" does not exist in the shipped version`);
            return { __esModule: true, default: value, [name]: value };
          },
          hidden: true,
        };
      }
    }
    if (!entry && (window.kelmoDownloadedPackages || []).includes(specifier)) {
      entry = {
        files: [...reactDom, `pkg~${specifier.split("/").join("~")}.js`],
        exports: bundled(specifier),
        hidden: true,
      };
    }
    if (entry)
      modules[specifier] = entry;
    return entry;
  }

  // The modules Kelmo ships that a source names in its imports, read from the text
  // itself, before it compiles. A name in a comment or a type-only import is among
  // them: its files load and go unused.
  function namedIn(source) {
    const named = new Set();
    const importPattern =
      /\bfrom\s*["']([^"'\n]+)["']|\bimport\s*\(?\s*["']([^"'\n]+)["']|\brequire\s*\(\s*["']([^"'\n]+)["']/g;
    for (const match of source.matchAll(importPattern)) {
      const specifier = match[1] || match[2] || match[3];
      if (resolve(specifier))
        named.add(specifier);
    }
    return [...named];
  }

  // What an artifact may import, for the message about an unknown import.
  function listing() {
    const names = Object.keys(modules).filter((name) => !modules[name].hidden);
    return [...names, "@/components/ui/*", "@/hooks/*"];
  }

  // Edits that turn one text into the other (Levenshtein distance).
  function distance(a, b) {
    let previous = Array.from({ length: b.length + 1 }, (_, i) => i);
    for (let i = 1; i <= a.length; i++) {
      const row = [i];
      for (let j = 1; j <= b.length; j++)
        row[j] = Math.min(previous[j] + 1, row[j - 1] + 1,
          previous[j - 1] + (a[i - 1] === b[j - 1] ? 0 : 1));
      previous = row;
    }
    return previous[b.length];
  }

  // The module an unknown specifier most likely meant: its package when only the path
  // inside it is wrong ("recharts/lib/BarChart"), or a name a few letters away
  // ("lucide-reac"); undefined when none is close.
  function nearest(specifier, packageName) {
    if (packageName !== specifier && resolve(packageName))
      return packageName;
    let best;
    let bestDistance = Math.max(2, Math.floor(specifier.length / 4)) + 1;
    for (const name of Object.keys(modules)) {
      const edits = distance(specifier, name);
      if (edits < bestDistance && !name.includes("jsx-")) {
        best = name;
        bestDistance = edits;
      }
    }
    return best;
  }

  window.kelmoModules = modules;
  window.kelmoModuleTable = { resolve, namedIn, listing, nearest };
})();
