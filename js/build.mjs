// Bundles the libraries that artifacts may import into flat files for the player
// page, one file per group of modules.
//
//   node js/build.mjs <output folder>
//
// Each bundle is an IIFE that registers its modules' namespaces on
// window.kelmoLibraries under their import specifiers; resources/runtime-modules.js
// maps specifiers to files and reads them from there. React and ReactDOM are not
// bundled: every bundle uses the page's one copy (window.React, window.ReactDOM),
// and a bundle may borrow another bundle's modules the same way (see `borrows`).
//
// To offer another library: `npm install --save-exact` it, add a bundle (or a
// module to an existing one) below, and an entry for its specifier in
// resources/runtime-modules.js.
import * as esbuild from "esbuild";
import { copyFileSync, existsSync, mkdirSync, readFileSync, readdirSync, rmSync, writeFileSync } from "node:fs";
import path from "node:path";
import { fileURLToPath, pathToFileURL } from "node:url";

const here = path.dirname(fileURLToPath(import.meta.url));
const root = path.dirname(here);

// file name -> { modules: specifier -> what to import, borrows: specifiers from other bundles }
// or { entry: a file of its own that registers what it provides, define: its build constants }
export const bundles = {
  "lib-lucide.js": { entry: "./lucide.js" },
  "lib-recharts.js": { modules: { recharts: "recharts" } },
  "lib-mathjs.js": { modules: { mathjs: "mathjs" } },
  "lib-lodash.js": { modules: { lodash: "lodash" } },
  "lib-d3.js": { modules: { d3: "d3" } },
  "lib-three.js": { modules: { three: "three" } },
  "lib-three-addons.js": {
    modules: {
      "three/addons/controls/OrbitControls.js": "three/examples/jsm/controls/OrbitControls.js",
      "three/addons/controls/TrackballControls.js":
        "three/examples/jsm/controls/TrackballControls.js",
      "three/addons/geometries/RoundedBoxGeometry.js":
        "three/examples/jsm/geometries/RoundedBoxGeometry.js",
    },
    borrows: ["three"],
  },
  "lib-papaparse.js": { modules: { papaparse: "papaparse" } },
  "lib-xlsx.js": { modules: { xlsx: "xlsx" } },
  "lib-chartjs.js": {
    modules: {
      "chart.js": "chart.js",
      "chart.js/auto": "chart.js/auto",
      "react-chartjs-2": "react-chartjs-2",
    },
  },
  "lib-tone.js": { modules: { tone: "tone" } },
  "lib-framer-motion.js": { modules: { "framer-motion": "framer-motion" } },
  "lib-classnames.js": {
    modules: {
      clsx: "clsx",
      "tailwind-merge": "tailwind-merge",
      "class-variance-authority": "class-variance-authority",
    },
  },
  "lib-uuid.js": { modules: { uuid: "uuid" } },
  // Drag and drop.
  "lib-dnd-kit.js": {
    modules: {
      "@dnd-kit/core": "@dnd-kit/core",
      "@dnd-kit/sortable": "@dnd-kit/sortable",
      "@dnd-kit/utilities": "@dnd-kit/utilities",
    },
  },
  "lib-hello-pangea-dnd.js": { modules: { "@hello-pangea/dnd": "@hello-pangea/dnd" } },
  "lib-react-dnd.js": {
    modules: { "react-dnd": "react-dnd", "react-dnd-html5-backend": "react-dnd-html5-backend" },
  },
  // Dates.
  "lib-date-fns.js": { modules: { "date-fns": "date-fns" } },
  "lib-dayjs.js": { modules: dayjsModules() },
  "lib-day-picker.js": { modules: { "react-day-picker": "react-day-picker" } },
  // Markdown and code.
  "lib-react-markdown.js": {
    modules: { "react-markdown": "react-markdown", "remark-gfm": "remark-gfm" },
  },
  "lib-marked.js": { modules: { marked: "marked" } },
  "lib-prism.js": { entry: "./prism.js" },
  // State, routing, forms.
  "lib-state.js": {
    modules: {
      zustand: "zustand",
      "zustand/middleware": "zustand/middleware",
      "zustand/shallow": "zustand/shallow",
      jotai: "jotai",
      "jotai/utils": "jotai/utils",
      immer: "immer",
    },
  },
  "lib-router.js": { modules: { "react-router-dom": "react-router-dom" } },
  "lib-forms.js": {
    modules: {
      "react-hook-form": "react-hook-form",
      "@hookform/resolvers/zod": "@hookform/resolvers/zod",
      "@hookform/resolvers/yup": "@hookform/resolvers/yup",
    },
    borrows: ["zod", "yup"],
  },
  "lib-zod.js": { modules: { zod: "zod" } },
  "lib-yup.js": { modules: { yup: "yup" } },
  // Animation, confetti, toasts.
  "lib-react-spring.js": { modules: { "@react-spring/web": "@react-spring/web" } },
  "lib-confetti.js": {
    modules: { "canvas-confetti": "canvas-confetti", "react-confetti": "react-confetti" },
  },
  "lib-sonner.js": { modules: { sonner: "sonner" } },
  // Export to PDF and pictures.
  "lib-jspdf.js": { modules: { jspdf: "jspdf" } },
  "lib-html2canvas.js": { modules: { html2canvas: "html2canvas" } },
  "lib-html-to-image.js": { modules: { "html-to-image": "html-to-image" } },
  // Math typesetting, also inside react-markdown.
  "lib-katex.js": {
    modules: {
      katex: "katex",
      "katex/contrib/auto-render": "katex/contrib/auto-render",
      "katex/contrib/mhchem": "katex/contrib/mhchem",
      "react-katex": "react-katex",
      "remark-math": "remark-math",
      "rehype-katex": "rehype-katex",
    },
  },
  // Diagrams and node editors.
  "lib-mermaid.js": { modules: { mermaid: "mermaid" } },
  "lib-xyflow.js": { modules: { "@xyflow/react": "@xyflow/react" } },
  "lib-reactflow.js": { modules: { reactflow: "reactflow" } },
  // 3D for React, over the one three.js.
  "lib-react-three-fiber.js": {
    modules: { "@react-three/fiber": "@react-three/fiber" },
    borrows: ["three"],
  },
  "lib-react-three-drei.js": {
    modules: { "@react-three/drei": "@react-three/drei" },
    borrows: ["three", "@react-three/fiber"],
  },
  // AI SDK clients: they load, and say what went wrong when the request fails.
  "lib-openai.js": { modules: { openai: "openai" } },
  "lib-anthropic.js": { modules: { "@anthropic-ai/sdk": "@anthropic-ai/sdk" } },
  "lib-google-ai.js": { modules: { "@google/generative-ai": "@google/generative-ai" } },
  "lib-ai-sdk.js": { modules: { ai: "ai", "@ai-sdk/react": "@ai-sdk/react" }, borrows: ["zod"] },
  // Styling, headless components, code blocks, colour pickers.
  "lib-styled-components.js": { modules: { "styled-components": "styled-components" } },
  "lib-headlessui.js": { modules: { "@headlessui/react": "@headlessui/react" } },
  "lib-syntax-highlighter.js": {
    modules: {
      "react-syntax-highlighter": "react-syntax-highlighter",
      "react-syntax-highlighter/dist/esm/styles/prism": "react-syntax-highlighter/dist/esm/styles/prism",
      "react-syntax-highlighter/dist/esm/styles/hljs": "react-syntax-highlighter/dist/esm/styles/hljs",
    },
  },
  "lib-react-color.js": { modules: { "react-color": "react-color" } },
  // Icon sets beside lucide-react, a bundle per set.
  ...iconSetBundles(),
  "kelmo-tailwind.js": { modules: { "kelmo:tailwind": "./tailwind.js" } },
  "kelmo-ui.js": { modules: uiModules().shared },
  ...uiModules().own,
};

// dayjs and the plugins artifacts extend it with.
function dayjsModules() {
  const modules = { dayjs: "dayjs" };
  const plugins = [
    "advancedFormat", "customParseFormat", "duration", "isBetween", "isSameOrAfter",
    "isSameOrBefore", "isToday", "isoWeek", "localizedFormat", "relativeTime", "timezone",
    "utc", "weekOfYear", "weekday",
  ];
  for (const plugin of plugins)
    modules[`dayjs/plugin/${plugin}`] = `dayjs/plugin/${plugin}.js`;
  return modules;
}
// react-icons: every set but the three largest (game, Phosphor and Line Awesome icons,
// 4–5 MB each), and Heroicons by size and style.
function iconSetBundles() {
  const reactIconSets = [
    "ai", "bi", "bs", "cg", "ci", "di", "fa", "fa6", "fc", "fi", "go", "gr", "hi", "hi2", "im",
    "io", "io5", "lu", "md", "ri", "rx", "si", "sl", "tb", "tfi", "ti", "vsc", "wi",
  ];
  const heroiconSets = ["24/outline", "24/solid", "20/solid", "16/solid"];
  const bundles = {};
  for (const set of reactIconSets)
    bundles[`lib-react-icons-${set}.js`] = { modules: { [`react-icons/${set}`]: `react-icons/${set}` } };
  for (const set of heroiconSets)
    bundles[`lib-heroicons-${set.replace("/", "-")}.js`] = {
      modules: { [`@heroicons/react/${set}`]: `@heroicons/react/${set}` },
    };
  return bundles;
}

// Every component of js/ui (a .jsx file each; the .js files there are their shared
// parts) and every hook of js/hooks, under the paths shadcn/ui projects import them by.
// Most share kelmo-ui.js. A component whose first line is `// kelmo: own bundle` (one
// built on a large package of its own, such as a date picker) gets kelmo-ui-<name>.js,
// which borrows `cn` and the other components it uses from kelmo-ui.js, and the
// libraries of other bundles named after "borrows" (`// kelmo: own bundle, borrows
// recharts`); the page lists those components too (resources/runtime-modules.js,
// ownBundles).
function uiModules() {
  const shared = { "@/lib/utils": "./lib/utils.js" };
  const own = {};
  const filesIn = (folder, extension) =>
    existsSync(path.join(here, folder))
      ? readdirSync(path.join(here, folder)).filter((file) => file.endsWith(extension)).sort()
      : [];
  for (const file of filesIn("ui", ".jsx")) {
    const name = file.slice(0, -".jsx".length);
    const specifier = `@/components/ui/${name}`;
    const marker = ownBundleMarker(path.join(here, "ui", file));
    if (marker)
      own[`kelmo-ui-${name}.js`] = { modules: { [specifier]: `./ui/${file}` }, borrows: marker.borrows };
    else
      shared[specifier] = `./ui/${file}`;
  }
  for (const file of filesIn("hooks", ".js"))
    shared[`@/hooks/${file.slice(0, -".js".length)}`] = `./hooks/${file}`;
  return { shared, own };
}

function ownBundleMarker(file) {
  const firstLine = readFileSync(file, "utf8").split("\n", 1)[0].trim();
  const marker = /^\/\/ kelmo: own bundle(?:, borrows (.+))?$/.exec(firstLine);
  return marker ? { borrows: marker[1] ? marker[1].trim().split(/\s+/) : [] } : undefined;
}

// In a bundle of its own, a component's imports of `cn` and of other components are
// the ones kelmo-ui.js registered, so that there is one copy of each.
const borrowedUiParts = {
  name: "kelmo-borrowed-ui",
  setup(build) {
    build.onResolve({ filter: /^\.\.?\// }, (args) => {
      if (path.dirname(args.importer) !== path.join(here, "ui") || !args.importer.endsWith(".jsx"))
        return undefined;
      if (!ownBundleMarker(args.importer))
        return undefined;
      if (/^\.\.\/lib\/utils(\.js)?$/.test(args.path))
        return { path: "@/lib/utils", namespace: "kelmo-borrowed" };
      const component = /^\.\/([\w-]+)\.jsx$/.exec(args.path);
      if (component)
        return { path: `@/components/ui/${component[1]}`, namespace: "kelmo-borrowed" };
      return undefined;
    });
  },
};

// The page's own React, for every bundle. The automatic JSX runtime is built over
// createElement, as React's browser build ships none.
const pageGlobals = {
  react: "module.exports = window.React;",
  "react-dom": "module.exports = window.ReactDOM;",
  "react-dom/client": "module.exports = window.ReactDOM;",
  "react/jsx-runtime": jsxRuntimeShim(),
  "react/jsx-dev-runtime": jsxRuntimeShim(),
};

function jsxRuntimeShim() {
  return `
    const React = window.React;
    function jsx(type, props, key) {
      return React.createElement(type, key === undefined ? props : Object.assign({}, props, { key }));
    }
    module.exports = { jsx, jsxs: jsx, jsxDEV: jsx, Fragment: React.Fragment };`;
}

function globalsPlugin(borrows) {
  return {
    name: "kelmo-globals",
    setup(build) {
      build.onResolve({ filter: /^[^./]/ }, (args) => {
        if (pageGlobals[args.path] !== undefined)
          return { path: args.path, namespace: "kelmo-global" };
        if (borrows.includes(args.path))
          return { path: args.path, namespace: "kelmo-borrowed" };
        return undefined;
      });
      build.onLoad({ filter: /.*/, namespace: "kelmo-global" }, (args) => ({
        contents: pageGlobals[args.path],
        loader: "js",
      }));
      build.onLoad({ filter: /.*/, namespace: "kelmo-borrowed" }, (args) => ({
        contents: `module.exports = window.kelmoLibraries[${JSON.stringify(args.path)}];`,
        loader: "js",
      }));
    },
  };
}

// The entry of one bundle: imports each module and registers its namespace.
function entrySource(modules) {
  const lines = ["const registry = (window.kelmoLibraries = window.kelmoLibraries || {});"];
  Object.entries(modules).forEach(([specifier, source], index) => {
    lines.push(`import * as module${index} from ${JSON.stringify(source)};`);
    lines.push(`registry[${JSON.stringify(specifier)}] = module${index};`);
  });
  return lines.join("\n");
}

// lucide-react's icons for js/lucide.js, as a script of one line per icon:
//   kelmoLucideIcon("activity", ["Activity", "ActivityIcon", "LucideActivity"], "<JSON>");
// the icon's file name, every name the package exports it under, and its drawing as
// JSON text; and a last line with the names of the package's `icons` export. The page
// loads the whole file only for an artifact whose icons cannot be told before it runs;
// otherwise the application serves the lines of the icons the artifact names. Read by
// running the package's own modules, so that the names are exactly the ones it exports.
async function writeLucideIcons(outputFolder) {
  const esm = path.join(root, "node_modules", "lucide-react", "dist", "esm");
  const lucide = await import(pathToFileURL(path.join(esm, "lucide-react.mjs")).href);
  const iconFolder = path.join(esm, "icons");
  const data = new Map();
  const fileOf = new Map();
  for (const entry of readdirSync(iconFolder).sort()) {
    if (!entry.endsWith(".mjs") || entry === "index.mjs")
      continue;
    const icon = await import(pathToFileURL(path.join(iconFolder, entry)).href);
    if (!icon.__iconData)
      continue; // a former name of an icon, re-exported from its file
    const file = entry.slice(0, -".mjs".length);
    data.set(file, JSON.stringify(icon.__iconData));
    fileOf.set(icon.default, file);
  }
  const namesOf = new Map([...data.keys()].map((file) => [file, []]));
  for (const [name, value] of Object.entries(lucide))
    if (fileOf.has(value))
      namesOf.get(fileOf.get(value)).push(name);
  const listed = Object.keys(lucide.icons).filter((name) => fileOf.has(lucide.icons[name]));
  if (listed.length < 1000 || !namesOf.get("activity")?.includes("Activity"))
    throw new Error("lucide-react: the icon table came out wrong; has the package changed its layout?");
  // Each icon's data stays a string until it is used: the page scans a string literal
  // much faster than it builds the objects it would describe.
  const lines = [...data].map(([file, json]) =>
    `kelmoLucideIcon(${JSON.stringify(file)},${JSON.stringify(namesOf.get(file))},${JSON.stringify(json)});`);
  lines.push(`kelmoLucideListed(${JSON.stringify(listed)});`);
  writeFileSync(path.join(outputFolder, "lucide-icons.js"), lines.join("\n") + "\n");
}

// lucide-react's own modules, which its package does not export one by one.
const lucideInternals = {
  name: "kelmo-lucide-internals",
  setup(build) {
    build.onResolve({ filter: /^lucide-react\/dist\// }, (args) => ({
      path: path.join(root, "node_modules", args.path),
    }));
  },
};

// Packages that ship an ES module and a CommonJS build would otherwise come in twice
// when one dependent imports and another requires them.
const oneCopy = {
  name: "kelmo-one-copy",
  setup(build) {
    const files = { katex: "katex/dist/katex.mjs" };
    build.onResolve({ filter: /^katex$/ }, (args) => ({
      path: path.join(root, "node_modules", files[args.path]),
    }));
  },
};

async function buildBundle(file, { modules, borrows = [], entry, define }, outputFolder) {
  const { metafile } = await esbuild.build({
    ...(entry
      ? { entryPoints: [path.join(here, entry)] }
      : { stdin: { contents: entrySource(modules), resolveDir: here, loader: "js", sourcefile: file } }),
    bundle: true,
    format: "iife",
    minify: true,
    target: "safari16",
    platform: "browser",
    define: {
      "process.env.NODE_ENV": '"production"',
      global: "window",
      ...(define ? await define() : {}),
    },
    jsx: "automatic",
    loader: { ".js": "jsx" },
    nodePaths: [path.join(root, "node_modules")],
    // The packages' licence notices stay with their code.
    legalComments: "eof",
    metafile: true,
    logLevel: "warning",
    plugins: [globalsPlugin(borrows), lucideInternals, borrowedUiParts, oneCopy],
    outfile: path.join(outputFolder, file),
  });
  return metafile;
}

// The stylesheets of the packages artifacts may import, flat beside the bundles as
// "css~<package>~<path>" (every "/" a "~"), also under the subpaths a package's
// "exports" gives them ("react-day-picker/style.css"). The page links the one an
// artifact imports.
// The stylesheet an "exports" target names, through its nested conditions.
function cssTarget(target) {
  if (typeof target === "string")
    return target.endsWith(".css") ? target : undefined;
  for (const value of Object.values(target && typeof target === "object" ? target : {}))
    if (cssTarget(value))
      return cssTarget(value);
  return undefined;
}

// A stylesheet is served flat, away from the files beside it, so the fonts and
// pictures it names by relative URL come inline. Of a font's formats only WOFF2 is
// kept where there is one: every engine Kelmo runs reads it.
function copyStylesheet(from, to) {
  const css = readFileSync(from, "utf8");
  if (!/url\(/.test(css)) {
    copyFileSync(from, to);
    return;
  }
  const types = { woff2: "font/woff2", woff: "font/woff", ttf: "font/ttf", svg: "image/svg+xml", png: "image/png", gif: "image/gif" };
  const onlyWoff2 = css.replace(/src:([^;}]*)/g, (whole, sources) => {
    const kept = sources.split(/,(?=\s*url\()/).filter((source) => /\.woff2["')?#]/.test(source));
    return kept.length ? `src:${kept.join(",")}` : whole;
  });
  const inlined = onlyWoff2.replace(/url\((["']?)([^"')]+)\1\)/g, (whole, quote, url) => {
    const file = path.join(path.dirname(from), url.split(/[?#]/)[0]);
    const type = types[path.extname(file).slice(1)];
    if (/^(data:|[a-z]+:\/\/|#)/i.test(url) || !type || !existsSync(file))
      return whole;
    return `url("data:${type};base64,${readFileSync(file).toString("base64")}")`;
  });
  writeFileSync(to, inlined);
}

function writeStylesheets(outputFolder) {
  const packages = Object.keys(JSON.parse(readFileSync(path.join(root, "package.json"), "utf8")).dependencies);
  const flat = (specifier) => "css~" + specifier.split("/").join("~");
  for (const name of packages) {
    const folder = path.join(root, "node_modules", name);
    const walk = (relative) => {
      for (const entry of readdirSync(path.join(folder, relative), { withFileTypes: true })) {
        const inner = path.posix.join(relative, entry.name);
        if (entry.isDirectory() && !["node_modules", "coverage"].includes(entry.name) && !entry.name.endsWith(".d.ts"))
          walk(inner);
        else if (entry.isFile() && entry.name.endsWith(".css")) {
          copyStylesheet(path.join(folder, inner), path.join(outputFolder, flat(`${name}/${inner}`)));
        }
      }
    };
    walk("");
    const { exports } = JSON.parse(readFileSync(path.join(folder, "package.json"), "utf8"));
    for (const [subpath, target] of Object.entries(exports && typeof exports === "object" ? exports : {})) {
      const file = cssTarget(target);
      if (subpath.endsWith(".css") && typeof file === "string" && existsSync(path.join(folder, file)))
        copyStylesheet(path.join(folder, file), path.join(outputFolder, flat(path.posix.join(name, subpath))));
    }
  }
}

// Which npm packages each written file holds, as folders under node_modules, for the
// licence listing (scripts/list-bundled-packages.mjs).
function writeBundledPackages(outputFolder, files, metafiles) {
  const folderOf = (input) =>
    /^(.*node_modules\/(?:@[^/]+\/)?[^/]+)\//.exec(path.relative(root, path.resolve(input)))?.[1];
  const shipped = { "lucide-icons.js": ["node_modules/lucide-react"] };
  files.forEach((file, index) => {
    const folders = Object.keys(metafiles[index].inputs).map(folderOf).filter(Boolean);
    shipped[file] = [...new Set(folders)].sort();
  });
  const packages = Object.keys(JSON.parse(readFileSync(path.join(root, "package.json"), "utf8")).dependencies)
    .sort((a, b) => b.length - a.length);
  for (const file of readdirSync(outputFolder).filter((name) => name.startsWith("css~"))) {
    const name = packages.find((candidate) => file.startsWith(`css~${candidate.replace("/", "~")}~`));
    shipped[file] = [`node_modules/${name}`];
  }
  writeFileSync(path.join(outputFolder, "bundled-packages.json"), JSON.stringify(shipped, null, 1) + "\n");
}

async function main() {
  const outputFolder = path.resolve(process.argv[2] || path.join(root, "build", "bundles"));
  mkdirSync(outputFolder, { recursive: true });
  // Bundles of an earlier build that this one no longer makes would be installed too.
  for (const file of readdirSync(outputFolder))
    if ((/^(lib-|kelmo-).*\.js$/.test(file) && !(file in bundles)) || file.startsWith("css~"))
      rmSync(path.join(outputFolder, file));
  const started = Date.now();
  const [metafiles] = await Promise.all([
    Promise.all(Object.entries(bundles).map(([file, bundle]) => buildBundle(file, bundle, outputFolder))),
    writeLucideIcons(outputFolder),
  ]);
  writeStylesheets(outputFolder);
  writeBundledPackages(outputFolder, Object.keys(bundles), metafiles);
  // What the build system waits for: every bundle is written once this is.
  writeFileSync(path.join(outputFolder, "bundles.stamp"), Object.keys(bundles).join("\n") + "\n");
  console.log(`Bundled ${Object.keys(bundles).length} files in ${Date.now() - started} ms`);
}

main().catch((error) => {
  console.error(error);
  process.exit(1);
});
