// Kelmo player: runs the artifact's JSX or TSX source, compiled by the application
// (or, when the application has no compiler that runs, by Babel in the page), and
// renders it with React 18. The page's progress is on the root element's
// data-kelmo-state: "compiling", then "rendered" or "error".
//
// Loaded before everything else on the page, so that errors of every later script
// reach the error panel.
(function () {
  "use strict";

  // Where the runtime files are served (this script among them), the same for every
  // artifact; what is the artifact's own (its module) comes from the page's origin.
  // A page exported as one file has them all inside it (kelmoEmbeddedFiles).
  const RUNTIME_URL = new URL(".", document.currentScript.src || location.href).href;
  const EMBEDDED_FILES = new Set(window.kelmoEmbeddedFiles || []);
  const MAX_SHOWN_ERRORS = 5;
  const TAILWIND_FILE = "kelmo-tailwind.js";
  const BABEL_FILE = "babel.min.js";
  const COMPILER_FILE = "artifact-compiler.js";
  const COMPILED_MODULE_FILE = "kelmo-compiled-module.js";
  const LUCIDE_ICONS_FILE = "lucide-icons.js";

  function setState(state) {
    document.documentElement.dataset.kelmoState = state;
  }
  setState("compiling");

  // Console calls reach the application through the forwarding script that it puts
  // at the start of every page; values are described the way it describes them.
  // The error and what caused it: clients of online services wrap the failure that
  // says what went wrong ("Connection error." ← "Could not reach …").
  function errorText(error, depth = 0) {
    const name = error.name || "Error";
    const text = error.message ? `${name}: ${error.message}` : name;
    const cause = error.cause;
    if (!(cause instanceof Error) || depth >= 3 || (error.message || "").includes(cause.message))
      return text;
    return `${text}\nCaused by ${errorText(cause, depth + 1)}`;
  }
  const describe = window.kelmoDescribe || String;

  // ---- Error panel -------------------------------------------------------------

  function element(tag, className, text) {
    const node = document.createElement(tag);
    if (className)
      node.className = className;
    if (text !== undefined)
      node.textContent = text;
    return node;
  }

  function errorPanel() {
    let panel = document.getElementById("kelmo-error");
    if (panel)
      return panel;
    panel = element("section", "kelmo-error");
    panel.id = "kelmo-error";
    panel.setAttribute("role", "alert");
    const inner = element("div", "kelmo-error__inner");
    const header = element("header", "kelmo-error__header");
    header.append(element("span", "kelmo-error__heading", "This artifact ran into a problem"));
    const dismiss = element("button", "kelmo-error__dismiss", "Dismiss");
    dismiss.type = "button";
    // Dismissed, the errors wait behind a small button: what the failed render left
    // may be nothing at all, and a blank page would say nothing.
    const reopen = element("button", "kelmo-error__reopen", "Show Error");
    reopen.type = "button";
    reopen.hidden = true;
    dismiss.addEventListener("click", () => {
      panel.hidden = true;
      reopen.hidden = false;
    });
    reopen.addEventListener("click", () => {
      panel.hidden = false;
      reopen.hidden = true;
    });
    header.append(dismiss);
    inner.append(header);
    panel.append(inner);
    document.body.append(panel, reopen);
    return panel;
  }

  // A few lines of the source around the given 1-based line, the line itself marked.
  function codeFrame(source, line, column) {
    const lines = source.split(/\r\n|\r|\n/);
    const first = Math.max(1, line - 2);
    const last = Math.min(lines.length, line + 2);
    const width = String(last).length;
    const frame = element("pre", "kelmo-error__code");
    for (let number = first; number <= last; ++number) {
      const row = element("div", number === line ? "kelmo-error__line kelmo-error__line--at" : "kelmo-error__line");
      row.append(element("span", "kelmo-error__gutter", String(number).padStart(width)));
      row.append(document.createTextNode(" " + lines[number - 1]));
      frame.append(row);
      if (number === line && column !== undefined) {
        const marker = element("div", "kelmo-error__line kelmo-error__marker");
        marker.append(element("span", "kelmo-error__gutter", " ".repeat(width)));
        marker.append(document.createTextNode(" " + " ".repeat(Math.max(0, column - 1)) + "^"));
        frame.append(marker);
      }
    }
    return frame;
  }

  // Shows one error on the panel and logs it once at level "error".
  // report: {title, message, line?, column?, source?, details?, alreadyLogged?}
  function showError(report) {
    setState("error");
    const where = report.line !== undefined ? ` (line ${report.line}, column ${report.column})` : "";
    if (!report.alreadyLogged)
      console.error(`${report.title}: ${report.message}${where}`);

    const panel = errorPanel();
    if (panel.querySelectorAll(".kelmo-error__entry").length >= MAX_SHOWN_ERRORS)
      return;
    const entry = element("article", "kelmo-error__entry");
    entry.append(element("h1", "kelmo-error__title", report.title));
    entry.append(element("p", "kelmo-error__message", report.message));
    if (report.line !== undefined)
      entry.append(element("p", "kelmo-error__location", `Line ${report.line}, column ${report.column}`));
    if (report.source !== undefined && report.line !== undefined)
      entry.append(codeFrame(report.source, report.line, report.column));
    if (report.details)
      entry.append(element("pre", "kelmo-error__details", report.details.trim()));
    panel.querySelector(".kelmo-error__inner").append(entry);
    // A new error is news: the panel comes back if it was dismissed.
    panel.hidden = false;
    document.querySelector(".kelmo-error__reopen").hidden = true;
  }

  function runtimeError(error, details, alreadyLogged) {
    const message = error instanceof Error ? errorText(error) : describe(error);
    showError({ title: "Runtime error", message, details, alreadyLogged });
  }

  window.addEventListener("error", (event) => {
    runtimeError(event.error !== undefined && event.error !== null ? event.error : event.message);
  });
  window.addEventListener("unhandledrejection", (event) => {
    runtimeError(event.reason);
  });

  // ---- Online services -----------------------------------------------------------

  // A request to another site that fails names the site and what it takes, rather
  // than the engine's bare "Load failed".
  const pageFetch = window.fetch;
  window.fetch = function fetch(input, init) {
    return pageFetch.call(this, input, init).catch((error) => {
      let url;
      try {
        url = new URL(input instanceof Request ? input.url : String(input), location.href);
      } catch {
        throw error;
      }
      if (!(error instanceof TypeError) || url.origin === location.origin || !/^https?:$/.test(url.protocol))
        throw error;
      throw new TypeError(
        `Could not reach ${url.host} (${error.message}). The artifact runs on your computer: ` +
        "online services need a network connection, and AI services an API key of your own.",
        { cause: error });
    });
  };

  // ---- Modules -----------------------------------------------------------------

  // The package an import specifier names: "lodash/debounce" -> "lodash",
  // "@scope/name/sub" -> "@scope/name".
  function packageOf(specifier) {
    const parts = specifier.split("/");
    return specifier.startsWith("@") && parts.length > 1 ? parts.slice(0, 2).join("/") : parts[0];
  }

  // Where the source imports the specifier: "file, line N" (the file alone when the
  // statement cannot be found, as with an import built at run time).
  function whereImported(specifier) {
    const file = window.kelmoArtifactFileName || "the artifact";
    const quoted = new RegExp(`(?:\\bfrom|\\bimport|\\brequire)\\s*\\(?\\s*["']${
      specifier.replace(/[.*+?^${}()|[\]\\]/g, "\\$&")}["']`);
    const lines = String(window.kelmoArtifactCode || "").split("\n");
    const index = lines.findIndex((line) => quoted.test(line));
    return index < 0 ? file : `${file}, line ${index + 1}`;
  }

  class UnresolvedModuleError extends Error {
    constructor(specifier) {
      const table = window.kelmoModuleTable;
      const packageName = packageOf(specifier);
      const near = table ? table.nearest(specifier, packageName) : undefined;
      const missing = /^(?:\.{1,2}\/|\/)/.test(specifier)
        ? "it is a file of the artifact's own project, which Kelmo does not have"
        : /^[a-z]+:/i.test(specifier)
          ? "Kelmo does not load modules from URLs, and does not ship this one"
          : near === packageName
            ? `Kelmo has the package "${packageName}" but not this path in it`
            : `the package "${packageName}" is not available in Kelmo`;
      const hint = near ? ` Did you mean "${near}"?` : "";
      const known = table ? table.listing() : [];
      super(`Cannot resolve import "${specifier}" (${whereImported(specifier)}): ${missing}.` +
        `${hint} Available modules: ${known.join(", ")}.`);
      this.name = "UnresolvedModuleError";
      // A package of the npm registry that Kelmo could download, not a path of the
      // artifact's own project nor a wrong path into a package Kelmo has.
      this.packageName = packageName;
      this.fetchable = near !== packageName && !/^[./~@]\//.test(specifier) &&
        !specifier.startsWith(".") && !specifier.startsWith("/");
    }
  }

  function entryFor(specifier) {
    const entry = window.kelmoModuleTable && window.kelmoModuleTable.resolve(specifier);
    if (!entry)
      throw new UnresolvedModuleError(specifier);
    return entry;
  }

  const loadedFiles = new Map();
  const moduleExports = new Map();

  // Scripts added together download in parallel and, not being async, run in the
  // order they were added; one loaded out of order runs as soon as it arrives.
  function loadFile(file, { inOrder = true } = {}) {
    // The page itself loads the files every artifact needs, ahead of this script.
    const url = file.startsWith(COMPILED_MODULE_FILE) ? new URL(file, location.href).href : RUNTIME_URL + file;
    if (!loadedFiles.has(file) && (EMBEDDED_FILES.has(file.replace(/\?.*$/, "")) ||
        document.querySelector(`script[src="${url}"]`)))
      loadedFiles.set(file, Promise.resolve());
    if (!loadedFiles.has(file)) {
      loadedFiles.set(file, new Promise((resolve, reject) => {
        const script = document.createElement("script");
        script.src = url;
        script.crossOrigin = "anonymous"; // so that errors in it keep their messages
        script.async = !inOrder;
        script.onload = resolve;
        script.onerror = () => reject(new Error(`Could not load the runtime file ${file}`));
        document.head.append(script);
      }));
    }
    return loadedFiles.get(file);
  }

  // Which lucide-react icons the page loads: undefined until the module is known, an
  // array of names when the compiler found every icon the module uses by name, and
  // "all" otherwise.
  let lucideIcons;

  function iconFile() {
    if (lucideIcons === undefined)
      return undefined;
    if (lucideIcons === "all")
      return LUCIDE_ICONS_FILE;
    return `${LUCIDE_ICONS_FILE}?names=${encodeURIComponent(lucideIcons.join(","))}`;
  }

  // Loads the files of every module (and any extra files), each once, in order.
  async function loadModules(specifiers, extraFiles = []) {
    const files = [];
    for (const specifier of specifiers)
      for (const file of entryFor(specifier).files) {
        const wanted = file === LUCIDE_ICONS_FILE ? iconFile() : file;
        if (wanted)
          files.push(wanted);
      }
    files.push(...extraFiles);
    await Promise.all([...new Set(files)].map(loadFile));
  }

  function require(specifier) {
    if (!moduleExports.has(specifier))
      moduleExports.set(specifier, entryFor(specifier).exports());
    return moduleExports.get(specifier);
  }

  // Unless the module came with the page, the application is compiling this code right
  // now: ask for its module at once; the answer comes when the compile ends.
  // The key names the compile, so that WebKit's memory cache never hands one page the
  // module of another. Out of order: the files loaded while it compiles run meanwhile.
  const moduleCompiledOnTheSide = compiledOnTheSide()
    ? undefined
    : loadFile(`${COMPILED_MODULE_FILE}?key=${encodeURIComponent(window.kelmoCompileKey)}`,
      { inOrder: false }).catch(() => undefined);

  // ---- Tailwind ----------------------------------------------------------------

  // The rules Tailwind made for this component's first frame on an earlier run. With
  // them in place the first frame needs no Tailwind at all, and Tailwind loads after
  // it, taking over every class from then on.
  const earlierStyles = typeof window.kelmoTailwindStyles === "string" ? window.kelmoTailwindStyles : null;
  const CACHED_STYLES_ID = "kelmo-tailwind-cached";
  if (earlierStyles !== null) {
    const style = document.createElement("style");
    style.id = CACHED_STYLES_ID;
    style.textContent = earlierStyles;
    document.head.prepend(style);
  }
  const tailwindBeforeFirstFrame = earlierStyles === null ? loadFile(TAILWIND_FILE) : undefined;

  function loadTailwindAfterFirstFrame() {
    loadFile(TAILWIND_FILE).then(() => {
      const cached = document.getElementById(CACHED_STYLES_ID);
      if (cached)
        cached.remove();
    }, () => undefined);
  }

  // Tailwind's rules as CSS text: its theme variables and every rule it has made.
  function tailwindStyles() {
    const theme = document.getElementById("kelmo-tailwind-theme");
    const sheet = document.querySelector("style[data-twind]");
    if (!theme || !sheet || !sheet.sheet)
      return null;
    return [theme.textContent, ...Array.from(sheet.sheet.cssRules, (rule) => rule.cssText)].join("\n");
  }

  // Hands the first frame's rules to the application, for the next run of this code.
  function keepStyles() {
    try {
      const styles = tailwindStyles();
      if (styles !== null && window.kelmoHost && typeof window.kelmoCompileKey === "string")
        window.kelmoHost.post("kelmoStyles", { key: window.kelmoCompileKey, styles }).catch(() => undefined);
    } catch (ignored) {
      // Not kept: the next run waits for Tailwind again.
    }
  }

  let componentMounted = false;

  function afterFirstFrame(work) {
    requestAnimationFrame(() => requestAnimationFrame(work));
  }

  // ---- Host APIs -----------------------------------------------------------------

  // What artifacts written for Claude's artifact viewer call on window. Storage is
  // kept by the application, per artifact file, across runs and restarts; Claude
  // and the user's files are out of reach offline, so those calls reject with a
  // message that says so.
  function installHostApis() {
    const host = window.kelmoHost;
    // Without the application (a page exported as one file), values stay in the
    // browser's local storage, or for this page only where there is none.
    const memory = browserStorage() || new Map();

    function keyText(key) {
      if (typeof key !== "string" || key === "")
        throw new TypeError("window.storage: the key must be a non-empty string");
      return key;
    }

    // Keys and values travel as JSON string literals, so that every string arrives
    // exactly, NUL and lone surrogates included; the application keeps them so.
    const encode = (text) => JSON.stringify(text);
    const decode = (literal) => JSON.parse(literal);

    async function ask(request) {
      if (host) {
        try {
          return await host.post("kelmoStorage", request);
        } catch (error) {
          throw new Error(String(error && error.message || error));
        }
      }
      const slot = (request.shared ? "shared:" : "own:") + (request.key || "");
      switch (request.operation) {
      case "get": return memory.has(slot) ? memory.get(slot) : null;
      case "set": memory.set(slot, request.value); return true;
      case "delete": return memory.delete(slot);
      default: {
        const set = request.shared ? "shared:" : "own:";
        return [...memory.keys()].filter((key) => key.startsWith(set)).map((key) => key.slice(set.length));
      }
      }
    }

    window.storage = {
      async get(key, shared = false) {
        const value = await ask({ operation: "get", key: encode(keyText(key)), shared: !!shared });
        return typeof value === "string" ? { key, value: decode(value), shared: !!shared } : null;
      },
      async set(key, value, shared = false) {
        const text = typeof value === "string" ? value : JSON.stringify(value);
        if (text === undefined)
          throw new TypeError("window.storage.set: the value must be a string");
        await ask({ operation: "set", key: encode(keyText(key)), value: encode(text), shared: !!shared });
        return { key, value: text, shared: !!shared };
      },
      async delete(key, shared = false) {
        const deleted = await ask({ operation: "delete", key: encode(keyText(key)), shared: !!shared });
        return { key, deleted: !!deleted, shared: !!shared };
      },
      async list(prefix = "", shared = false) {
        const start = String(prefix || "");
        const keys = Array.from(await ask({ operation: "list", shared: !!shared }) || [], decode);
        return { keys: keys.filter((key) => key.startsWith(start)).sort(), prefix: prefix || "", shared: !!shared };
      },
    };

    function offline(what) {
      return () => Promise.reject(new Error(
        `${what} is not available offline: Kelmo runs artifacts on this computer, without Claude.`));
    }
    window.claude = { complete: offline("window.claude.complete") };
    window.fs = { readFile: offline("window.fs.readFile") };
  }

  // localStorage behind the few Map methods the storage calls use, its keys prefixed.
  function browserStorage() {
    let local;
    try {
      local = window.localStorage;
      local.getItem("");
    } catch {
      return undefined;
    }
    const prefix = "kelmo-storage:";
    return {
      has: (slot) => local.getItem(prefix + slot) !== null,
      get: (slot) => local.getItem(prefix + slot),
      set: (slot, value) => local.setItem(prefix + slot, value),
      delete: (slot) => {
        const had = local.getItem(prefix + slot) !== null;
        local.removeItem(prefix + slot);
        return had;
      },
      keys: () => Object.keys(local).filter((key) => key.startsWith(prefix)).map((key) => key.slice(prefix.length)),
    };
  }

  // ---- Compiling ---------------------------------------------------------------

  class CompileError extends Error {}

  function compile(source) {
    try {
      return window.kelmoTransform(source);
    } catch (error) {
      const compileError = new CompileError(plainCompileMessage(error));
      compileError.loc = error.loc;
      throw compileError;
    }
  }

  // Babel's message without its file name, position suffix and code frame.
  function plainCompileMessage(error) {
    const firstLine = String(error.message || error).split("\n")[0];
    return firstLine.replace(/^[^:]*artifact\.tsx: /, "").replace(/ \(\d+:\d+\)$/, "");
  }

  // ---- Rendering ---------------------------------------------------------------

  function isComponent(value) {
    return typeof value === "function" ||
      (value !== null && typeof value === "object" && typeof value.$$typeof === "symbol");
  }

  // The default export; else a component named App (exported or not); else the
  // last exported component, in source order.
  function chooseComponent(exports, exportNames, localApp) {
    if (isComponent(exports.default))
      return exports.default;
    if (isComponent(exports.App))
      return exports.App;
    if (isComponent(localApp))
      return localApp;
    for (let index = exportNames.length - 1; index >= 0; --index) {
      const name = exportNames[index];
      if (/^[A-Z]/.test(name) && isComponent(exports[name]))
        return exports[name];
    }
    return undefined;
  }

  function render(Component) {
    const React = require("react");
    const { createRoot } = require("react-dom/client");

    class ErrorBoundary extends React.Component {
      constructor(props) {
        super(props);
        this.state = { failed: false };
      }
      static getDerivedStateFromError() {
        return { failed: true };
      }
      componentDidCatch(error, info) {
        // The component stack ("in App"), without the player's own wrappers;
        // React has logged the error itself.
        const stack = String((info && info.componentStack) || "").split("\n")
          .filter((line) => line.trim() && !line.includes(RUNTIME_URL + "runtime.js"))
          .map((line) => line.replace(/^\s*([^@\s]*)@.*$/, "in $1")).join("\n");
        runtimeError(error, stack, true);
      }
      render() {
        return this.state.failed ? null : this.props.children;
      }
    }

    function MarkRendered({ children }) {
      React.useEffect(() => {
        if (document.documentElement.dataset.kelmoState !== "error")
          setState("rendered");
        // After Tailwind's observer has seen the first frame's classes: it runs once
        // the task that changed the document is over.
        if (earlierStyles === null)
          setTimeout(() => {
            if (document.documentElement.dataset.kelmoState === "rendered")
              keepStyles();
          }, 0);
        if (earlierStyles !== null)
          afterFirstFrame(loadTailwindAfterFirstFrame);
      }, []);
      return children;
    }

    const root = createRoot(document.getElementById("root"));
    root.render(React.createElement(ErrorBoundary, null,
      React.createElement(MarkRendered, null, React.createElement(Component))));
  }

  // What the application's compiler made of this code, when it is whole: the module,
  // or the compiler's error ({message, line, column}, line 0 when it named no place).
  function compiledOnTheSide() {
    try {
      const compiled = JSON.parse(window.kelmoCompiledArtifact);
      if (compiled && compiled.error && typeof compiled.error.message === "string")
        return compiled;
      if (compiled && typeof compiled.code === "string" && Array.isArray(compiled.imports) &&
          Array.isArray(compiled.exports))
        return compiled;
    } catch (ignored) {
      // No compiler, or something unusable: the page compiles for itself.
    }
    return undefined;
  }

  function compilerError({ message, line, column }) {
    const error = new CompileError(message);
    if (Number.isInteger(line) && line > 0)
      error.loc = { line, column: Math.max(0, (column || 1) - 1) };
    return error;
  }

  async function run() {
    const source = window.kelmoArtifactCode;
    if (typeof source !== "string" || source.trim() === "")
      throw new Error("The artifact has no code");

    installHostApis();
    // The player renders with React, whatever the artifact imports, and styles with
    // Tailwind, which nearly every artifact's classes assume; the page loads them
    // itself. Babel is the largest file by far and loads only when needed.
    const basics = Promise.all([loadModules(["react", "react-dom/client"]), tailwindBeforeFirstFrame]);
    basics.catch(() => undefined); // reported once, where it is awaited below
    // The application is compiling meanwhile: the libraries load while it does.
    if (moduleCompiledOnTheSide && window.kelmoModuleTable)
      loadModules(window.kelmoModuleTable.namedIn(source)).catch(() => undefined);
    await moduleCompiledOnTheSide;
    let compiled = compiledOnTheSide();
    if (compiled && compiled.error)
      throw compilerError(compiled.error);
    lucideIcons = compiled && Array.isArray(compiled.icons) ? compiled.icons : "all";
    if (!compiled) {
      await Promise.all([loadFile(BABEL_FILE), loadFile(COMPILER_FILE)]).catch(() => undefined);
      if (typeof Babel === "undefined" || typeof window.kelmoTransform !== "function")
        throw new Error("The Babel runtime did not load");
      compiled = compile(source);
    }
    // An import the page does not know fails where the module requires it, so that
    // text that merely looks like a require call (in a template string) harms nothing.
    const known = compiled.imports.filter((specifier) =>
      window.kelmoModuleTable && window.kelmoModuleTable.resolve(specifier));
    await Promise.all([basics, loadModules(known)]);

    const module = { exports: {} };
    const evaluate = new Function("require", "module", "exports",
      `${compiled.code}\n;return typeof App === "undefined" ? undefined : App;\n//# sourceURL=artifact.js`);
    const localApp = evaluate(require, module, module.exports);

    const Component = chooseComponent(module.exports, compiled.exports, localApp);
    if (Component) {
      componentMounted = true;
      render(Component);
      return;
    }
    // The artifact may have rendered itself; give it a frame to do so.
    requestAnimationFrame(() => setTimeout(() => {
      const root = document.getElementById("root");
      if (document.documentElement.dataset.kelmoState === "error")
        return;
      if (root.childNodes.length > 0 || document.body.children.length > 1)
        setState("rendered");
      else
        showError({
          title: "Nothing to render",
          message: "Export a component, for example: export default function App() { … }",
        });
    }, 0));
  }

  function start() {
    run().catch((error) => {
      if (error instanceof CompileError) {
        showError({
          title: "Compile error",
          message: error.message,
          line: error.loc ? error.loc.line : undefined,
          column: error.loc ? error.loc.column + 1 : undefined,
          source: window.kelmoArtifactCode,
        });
      } else if (error instanceof UnresolvedModuleError) {
        showError({ title: "Unknown import", message: error.message });
        if (error.fetchable && window.kelmoHost)
          window.kelmoHost.post("kelmoPackages", { missing: error.packageName }).catch(() => undefined);
      } else {
        runtimeError(error);
      }
    }).finally(() => {
      // A mounted component loads Tailwind after its own first frame; a page without
      // one (an error, or an artifact that rendered itself) after the next frames.
      if (earlierStyles !== null && !componentMounted)
        afterFirstFrame(loadTailwindAfterFirstFrame);
    });
  }

  if (document.readyState === "loading")
    document.addEventListener("DOMContentLoaded", start);
  else
    start();
})();
