import * as React from "react";

// A box that keeps the given width-to-height ratio; its children fill it.
export const AspectRatio = React.forwardRef(function AspectRatio(
  { ratio = 1, style, children, ...props }, ref) {
  return (
    <div style={{ position: "relative", width: "100%", paddingBottom: `${100 / ratio}%` }}>
      <div ref={ref} {...props} style={{ ...style, position: "absolute", inset: 0 }}>{children}</div>
    </div>
  );
});
