// Prism with the languages artifacts highlight most. Its language files extend the
// global Prism, so the core comes first and is made global before them.
import Prism from "prismjs";
window.Prism = Prism;
import "prismjs/components/prism-markup-templating.js";
import "prismjs/components/prism-jsx.js";
import "prismjs/components/prism-typescript.js";
import "prismjs/components/prism-tsx.js";
import "prismjs/components/prism-python.js";
import "prismjs/components/prism-json.js";
import "prismjs/components/prism-bash.js";
import "prismjs/components/prism-css.js";
import "prismjs/components/prism-sql.js";
import "prismjs/components/prism-java.js";
import "prismjs/components/prism-c.js";
import "prismjs/components/prism-cpp.js";
import "prismjs/components/prism-rust.js";
import "prismjs/components/prism-go.js";
import "prismjs/components/prism-yaml.js";
import "prismjs/components/prism-markdown.js";

const registry = (window.kelmoLibraries = window.kelmoLibraries || {});
registry.prismjs = { default: Prism, ...Prism };
