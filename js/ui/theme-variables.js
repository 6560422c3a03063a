// Styles that only some components need (the sidebar's and the charts' colour
// tokens, the caret of the code input): added to the page once, when such a
// component first renders, and first in <head>, so that an artifact's own
// stylesheet may override them.
export function addPageStyle(id, css) {
  if (document.getElementById(id))
    return;
  const style = document.createElement("style");
  style.id = id;
  style.textContent = css;
  document.head.prepend(style);
}

export function addThemeVariables(id, light, dark) {
  const block = (selector, values) =>
    `${selector} {\n${Object.entries(values).map(([name, value]) => `  --${name}: ${value};`).join("\n")}\n}`;
  addPageStyle(id, `${block(":root", light)}\n${block(".dark", dark)}\n`);
}
