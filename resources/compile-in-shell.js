// Run by JavaScriptCore's command-line shell:
//   jsc compile-in-shell.js -- BABEL COMPILER < SOURCE
// Prints the module ({code, imports, exports}) as JSON text, or null when Babel
// throws on the source. Anything else that fails, loading Babel say, ends the shell
// with an error.
var console = { log() {}, info() {}, debug() {}, warn() {}, error() {} };
load(arguments[0]);
load(arguments[1]);
(function () {
  "use strict";
  const source = read("/dev/stdin");
  let module = null;
  try {
    module = kelmoTransform(source);
  } catch (error) {
    module = null;
  }
  print(JSON.stringify(module));
})();
