// The one door between an artifact's page and the application. The application puts
// this script at the start of the artifact's own top-level page, and of no frame and
// no other page, calling it with the token of the current load. Everything posted
// through it carries that token; the application drops what comes without it (from a
// frame, another page, or a page that has since been replaced).
//
// It forwards the page's console calls ("jsConsole", one {level, message} object per
// call), which the application prints on standard output, and gives the page
// window.kelmoHost.post(channel, body) for the application's other channels.
(function (loadToken) {
  "use strict";

  if (window.kelmoHost)
    return; // already in place

  // Taken now, before any of the page's own scripts could replace them.
  const handlers = window.webkit && window.webkit.messageHandlers;
  const senders = new Map();
  for (const channel of ["jsConsole", "kelmoStorage", "kelmoStyles", "kelmoPackages"]) {
    const handler = handlers && handlers[channel];
    if (handler)
      senders.set(channel, handler.postMessage.bind(handler));
  }

  // The application's answer (a promise on channels that answer), or a rejection when
  // it is not listening.
  function post(channel, body) {
    const send = senders.get(channel);
    if (!send)
      return Promise.reject(new Error("Kelmo is not listening"));
    return send(Object.assign({}, body, { token: loadToken }));
  }

  function postToApplication(level, message) {
    try {
      post("jsConsole", { level, message });
    } catch (ignored) {
      // Without the application there is nobody to tell.
    }
  }

  function errorText(error) {
    const name = error.name || "Error";
    return error.message ? `${name}: ${error.message}` : name;
  }

  // One argument as a browser console shows it: strings as they are, errors with
  // their message, elements as markup, other objects as JSON where possible.
  function describe(value) {
    if (typeof value === "string")
      return value;
    if (value instanceof Error)
      return errorText(value);
    if (typeof value === "bigint")
      return `${value}n`;
    if (value === null || typeof value !== "object")
      return String(value);
    if (typeof Element !== "undefined" && value instanceof Element)
      return value.outerHTML;
    try {
      const seen = new WeakSet();
      const json = JSON.stringify(value, (key, inner) => {
        if (inner instanceof Error)
          return errorText(inner);
        if (typeof inner === "bigint")
          return `${inner}n`;
        if (typeof inner === "function")
          return `[Function${inner.name ? ": " + inner.name : ""}]`;
        if (inner !== null && typeof inner === "object") {
          if (seen.has(inner))
            return "[Circular]";
          seen.add(inner);
        }
        return inner;
      });
      if (json !== undefined)
        return json;
    } catch (ignored) {
      // Fall back to the object's own text below.
    }
    return String(value);
  }

  // Joins a console call's arguments into one line, substituting the format
  // directives (%s %d %i %f %o %O %c %%) of a leading string as browsers do.
  function formatArguments(args) {
    let rest = Array.from(args);
    const parts = [];
    if (typeof rest[0] === "string" && rest.length > 1 && rest[0].includes("%")) {
      const format = rest.shift();
      parts.push(format.replace(/%([sdifoOc%])/g, (directive, kind) => {
        if (kind === "%")
          return "%";
        if (rest.length === 0)
          return directive;
        const value = rest.shift();
        switch (kind) {
        case "s": return typeof value === "string" ? value : describe(value);
        case "d":
        case "i": return String(parseInt(value, 10));
        case "f": return String(parseFloat(value));
        case "c": return "";
        default: return describe(value);
        }
      }));
    }
    for (const value of rest)
      parts.push(describe(value));
    return parts.join(" ");
  }

  for (const level of ["log", "info", "warn", "error", "debug"]) {
    const original = console[level] ? console[level].bind(console) : () => {};
    console[level] = function (...args) {
      original(...args);
      postToApplication(level, formatArguments(args));
    };
  }

  // The player page describes values in its error panel the same way.
  Object.defineProperty(window, "kelmoDescribe", { value: describe });
  Object.defineProperty(window, "kelmoHost", { value: Object.freeze({ post }) });
})
