// Kelmo player: the modules an artifact may import.
//
// Each entry maps an import specifier to the runtime files that provide it and to
// a function that answers its exports once those files have run. Files are
// top-level resources served under artifact://player/; they are loaded in the
// order listed, each at most once, and only when a module that needs them is
// imported (or needed by the player itself, which renders with React). To offer
// another library, add its file to the resources and an entry here.
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

  window.kelmoModules = {
    "react": {
      files: react,
      exports: () => window.React,
    },
    "react/jsx-runtime": {
      files: react,
      exports: () => jsxRuntime(window.React),
    },
    "react/jsx-dev-runtime": {
      files: react,
      exports: () => jsxRuntime(window.React),
    },
    "react-dom": {
      files: reactDom,
      exports: () => window.ReactDOM,
    },
    "react-dom/client": {
      files: reactDom,
      exports: () => ({
        createRoot: window.ReactDOM.createRoot,
        hydrateRoot: window.ReactDOM.hydrateRoot,
      }),
    },
  };
})();
