// kelmo: own bundle, borrows recharts
import * as React from "react";
import * as RechartsPrimitive from "recharts";
import { cn } from "../lib/utils.js";

// Theme name -> the selector its colours apply under.
const THEMES = { light: "", dark: ".dark" };

// "var(--chart-1)", as configs for Tailwind 4 write it, names a whole colour; the
// page's tokens are HSL channels, which need hsl() around them.
function usableColour(colour) {
  const variable = /^var\((--[\w-]+)\)$/.exec(String(colour).trim());
  if (!variable)
    return colour;
  const value = getComputedStyle(document.documentElement).getPropertyValue(variable[1]).trim();
  return /^[\d.]+(deg)?\s+[\d.]+%\s+[\d.]+%$/.test(value) ? `hsl(${colour})` : colour;
}

const ChartContext = React.createContext(null);

function useChart() {
  const context = React.useContext(ChartContext);
  if (!context)
    throw new Error("useChart must be used within a <ChartContainer />");
  return context;
}

export const ChartContainer = React.forwardRef(function ChartContainer(
  { id, className, children, config, ...props }, ref) {
  const uniqueId = React.useId();
  const chartId = `chart-${id ?? uniqueId.replace(/:/g, "")}`;
  return (
    <ChartContext.Provider value={{ config }}>
      <div ref={ref} data-chart={chartId}
        className={cn(
          "flex aspect-video justify-center text-xs [&_.recharts-cartesian-axis-tick_text]:fill-muted-foreground [&_.recharts-cartesian-grid_line[stroke='#ccc']]:stroke-border/50 [&_.recharts-curve.recharts-tooltip-cursor]:stroke-border [&_.recharts-dot[stroke='#fff']]:stroke-transparent [&_.recharts-layer]:outline-none [&_.recharts-polar-grid_[stroke='#ccc']]:stroke-border [&_.recharts-radial-bar-background-sector]:fill-muted [&_.recharts-rectangle.recharts-tooltip-cursor]:fill-muted [&_.recharts-reference-line_[stroke='#ccc']]:stroke-border [&_.recharts-sector[stroke='#fff']]:stroke-transparent [&_.recharts-sector]:outline-none [&_.recharts-surface]:outline-none",
          className)}
        {...props}>
        <ChartStyle id={chartId} config={config} />
        <RechartsPrimitive.ResponsiveContainer>{children}</RechartsPrimitive.ResponsiveContainer>
      </div>
    </ChartContext.Provider>
  );
});
ChartContainer.displayName = "Chart";

// Gives each series of the config its colour as --color-<key>, per theme.
export function ChartStyle({ id, config }) {
  const coloured = Object.entries(config ?? {}).filter(([, item]) => item.theme ?? item.color);
  if (!coloured.length)
    return null;
  const css = Object.entries(THEMES).map(([theme, prefix]) => {
    const lines = coloured.map(([key, item]) => {
      const colour = item.theme?.[theme] ?? item.color;
      return colour ? `  --color-${key}: ${usableColour(colour)};` : null;
    }).filter(Boolean);
    return `${prefix} [data-chart=${id}] {\n${lines.join("\n")}\n}`;
  }).join("\n");
  return <style dangerouslySetInnerHTML={{ __html: css }} />;
}

export const ChartTooltip = RechartsPrimitive.Tooltip;

// The config entry of a payload item: by the key, or by the value the item or its
// data row has under that key (a pie's "browser": "chrome").
function configOf(config, item, key) {
  if (typeof item !== "object" || item === null)
    return undefined;
  const row = typeof item.payload === "object" && item.payload !== null ? item.payload : undefined;
  let name = key;
  if (typeof item[key] === "string")
    name = item[key];
  else if (row && typeof row[key] === "string")
    name = row[key];
  return name in config ? config[name] : config[key];
}

export const ChartTooltipContent = React.forwardRef(function ChartTooltipContent(
  { active, payload, className, indicator = "dot", hideLabel = false, hideIndicator = false, label,
    labelFormatter, labelClassName, formatter, color, nameKey, labelKey }, ref) {
  const { config } = useChart();

  const tooltipLabel = React.useMemo(() => {
    if (hideLabel || !payload?.length)
      return null;
    const [item] = payload;
    const key = `${labelKey ?? item.dataKey ?? item.name ?? "value"}`;
    const itemConfig = configOf(config, item, key);
    const value = !labelKey && typeof label === "string" ? config[label]?.label ?? label : itemConfig?.label;
    if (labelFormatter)
      return <div className={cn("font-medium", labelClassName)}>{labelFormatter(value, payload)}</div>;
    return value ? <div className={cn("font-medium", labelClassName)}>{value}</div> : null;
  }, [label, labelFormatter, payload, hideLabel, labelClassName, config, labelKey]);

  if (!active || !payload?.length)
    return null;

  const nestLabel = payload.length === 1 && indicator !== "dot";
  return (
    <div ref={ref}
      className={cn("grid min-w-[8rem] items-start gap-1.5 rounded-lg border border-border/50 bg-background px-2.5 py-1.5 text-xs shadow-xl", className)}>
      {!nestLabel ? tooltipLabel : null}
      <div className="grid gap-1.5">
        {payload.map((item, index) => {
          const key = `${nameKey ?? item.name ?? item.dataKey ?? "value"}`;
          const itemConfig = configOf(config, item, key);
          const indicatorColour = color ?? item.payload?.fill ?? item.color;
          return (
            <div key={`${item.dataKey ?? index}`}
              className={cn("flex w-full flex-wrap items-stretch gap-2 [&>svg]:h-2.5 [&>svg]:w-2.5 [&>svg]:text-muted-foreground",
                indicator === "dot" && "items-center")}>
              {formatter && item?.value !== undefined && item.name ? formatter(item.value, item.name, item, index, item.payload) : (
                <>
                  {itemConfig?.icon ? <itemConfig.icon /> : !hideIndicator && (
                    <div style={{ backgroundColor: indicator === "dashed" ? "transparent" : indicatorColour, borderColor: indicatorColour }}
                      className={cn("shrink-0 rounded-[2px]", {
                        "h-2.5 w-2.5": indicator === "dot",
                        "w-1": indicator === "line",
                        "w-0 border-[1.5px] border-dashed": indicator === "dashed",
                        "my-0.5": nestLabel && indicator === "dashed",
                      })} />
                  )}
                  <div className={cn("flex flex-1 justify-between leading-none", nestLabel ? "items-end" : "items-center")}>
                    <div className="grid gap-1.5">
                      {nestLabel ? tooltipLabel : null}
                      <span className="text-muted-foreground">{itemConfig?.label ?? item.name}</span>
                    </div>
                    {item.value !== undefined && item.value !== null && (
                      <span className="font-mono font-medium tabular-nums text-foreground">
                        {item.value.toLocaleString()}
                      </span>
                    )}
                  </div>
                </>
              )}
            </div>
          );
        })}
      </div>
    </div>
  );
});
ChartTooltipContent.displayName = "ChartTooltip";

export const ChartLegend = RechartsPrimitive.Legend;

export const ChartLegendContent = React.forwardRef(function ChartLegendContent(
  { className, hideIcon = false, payload, verticalAlign = "bottom", nameKey }, ref) {
  const { config } = useChart();
  if (!payload?.length)
    return null;
  return (
    <div ref={ref}
      className={cn("flex items-center justify-center gap-4", verticalAlign === "top" ? "pb-3" : "pt-3", className)}>
      {payload.map((item) => {
        const key = `${nameKey ?? item.dataKey ?? "value"}`;
        const itemConfig = configOf(config, item, key);
        return (
          <div key={item.value ?? key}
            className="flex items-center gap-1.5 [&>svg]:h-3 [&>svg]:w-3 [&>svg]:text-muted-foreground">
            {itemConfig?.icon && !hideIcon
              ? <itemConfig.icon />
              : <div className="h-2 w-2 shrink-0 rounded-[2px]" style={{ backgroundColor: item.color }} />}
            {itemConfig?.label}
          </div>
        );
      })}
    </div>
  );
});
ChartLegendContent.displayName = "ChartLegend";
