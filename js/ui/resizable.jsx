// kelmo: own bundle
import { GripVertical } from "lucide-react";
import * as React from "react";
import * as ResizablePrimitive from "react-resizable-panels";
import { cn } from "../lib/utils.js";

// Artifacts are written against the older API of react-resizable-panels (PanelGroup
// with `direction`, sizes as plain numbers that meant percentages); the shipped one
// takes `orientation` and reads plain numbers as pixels.
const percent = (size) => (typeof size === "number" ? `${size}%` : size);

const Orientation = React.createContext("horizontal");

export function ResizablePanelGroup({ className, direction, orientation, onLayout, onLayoutChange,
  autoSaveId, storage, ...props }) {
  const along = orientation ?? direction ?? "horizontal";
  const layoutChanged = onLayoutChange ?? (onLayout && ((layout) => onLayout(Object.values(layout))));
  return (
    <Orientation.Provider value={along}>
      <ResizablePrimitive.Group orientation={along} data-panel-group-direction={along}
        onLayoutChange={layoutChanged}
        className={cn("flex h-full w-full data-[panel-group-direction=vertical]:flex-col", className)}
        {...props} />
    </Orientation.Provider>
  );
}

export const ResizablePanel = React.forwardRef(function ResizablePanel(
  { defaultSize, minSize, maxSize, collapsedSize, order, onCollapse, onExpand, onResize, panelRef, ...props },
  ref) {
  const handle = React.useRef(null);
  const collapsed = React.useRef(undefined);
  // The older handle: sizes in percent, and isExpanded beside isCollapsed.
  React.useImperativeHandle(ref, () => ({
    collapse: () => handle.current?.collapse(),
    expand: () => handle.current?.expand(),
    isCollapsed: () => Boolean(handle.current?.isCollapsed()),
    isExpanded: () => !handle.current?.isCollapsed(),
    getSize: () => handle.current?.getSize().asPercentage ?? 0,
    resize: (size) => handle.current?.resize(percent(size)),
  }), []);
  const resized = (size, id, previous) => {
    const nowCollapsed = Boolean(handle.current?.isCollapsed());
    if (collapsed.current !== undefined && nowCollapsed !== collapsed.current)
      (nowCollapsed ? onCollapse : onExpand)?.();
    collapsed.current = nowCollapsed;
    onResize?.(size, id, previous);
  };
  return (
    <ResizablePrimitive.Panel panelRef={(value) => {
      handle.current = value;
      if (typeof panelRef === "function")
        panelRef(value);
      else if (panelRef)
        panelRef.current = value;
    }}
      defaultSize={percent(defaultSize)} minSize={percent(minSize)} maxSize={percent(maxSize)}
      collapsedSize={percent(collapsedSize)} onResize={resized} {...props} />
  );
});

export function ResizableHandle({ withHandle, className, ...props }) {
  const along = React.useContext(Orientation);
  return (
    <ResizablePrimitive.Separator data-panel-group-direction={along}
      className={cn(
        "relative flex w-px items-center justify-center bg-border after:absolute after:inset-y-0 after:left-1/2 after:w-1 after:-translate-x-1/2 focus-visible:outline-none focus-visible:ring-1 focus-visible:ring-ring focus-visible:ring-offset-1",
        "data-[panel-group-direction=vertical]:h-px data-[panel-group-direction=vertical]:w-full data-[panel-group-direction=vertical]:after:left-0 data-[panel-group-direction=vertical]:after:h-1 data-[panel-group-direction=vertical]:after:w-full data-[panel-group-direction=vertical]:after:-translate-y-1/2 data-[panel-group-direction=vertical]:after:translate-x-0 [&[data-panel-group-direction=vertical]>div]:rotate-90",
        className)}
      {...props}>
      {withHandle && (
        <div className="z-10 flex h-4 w-3 items-center justify-center rounded-sm border bg-border">
          <GripVertical className="h-2.5 w-2.5" />
        </div>
      )}
    </ResizablePrimitive.Separator>
  );
}
