// Styles that only some components need (the caret of the code input): added to
// the page once, when such a component first renders, and first in <head>, so that
// an artifact's own stylesheet may override them.
export function addPageStyle(id, css) {
  if (document.getElementById(id))
    return;
  const style = document.createElement("style");
  style.id = id;
  style.textContent = css;
  document.head.prepend(style);
}
