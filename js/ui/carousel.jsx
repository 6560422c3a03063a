// kelmo: own bundle
import useEmblaCarousel from "embla-carousel-react";
import { ArrowLeft, ArrowRight } from "lucide-react";
import * as React from "react";
import { cn } from "../lib/utils.js";
import { Button } from "./button.jsx";

const CarouselContext = React.createContext(null);

export function useCarousel() {
  const context = React.useContext(CarouselContext);
  if (!context)
    throw new Error("useCarousel must be used within a <Carousel />");
  return context;
}

export const Carousel = React.forwardRef(function Carousel(
  { orientation = "horizontal", opts, setApi, plugins, className, children, ...props }, ref) {
  const [carouselRef, api] = useEmblaCarousel({ ...opts, axis: orientation === "horizontal" ? "x" : "y" }, plugins);
  const [canScrollPrev, setCanScrollPrev] = React.useState(false);
  const [canScrollNext, setCanScrollNext] = React.useState(false);

  const onSelect = React.useCallback((current) => {
    if (!current)
      return;
    setCanScrollPrev(current.canScrollPrev());
    setCanScrollNext(current.canScrollNext());
  }, []);
  const scrollPrev = React.useCallback(() => api?.scrollPrev(), [api]);
  const scrollNext = React.useCallback(() => api?.scrollNext(), [api]);
  const onKeyDown = React.useCallback((event) => {
    if (event.key === "ArrowLeft") {
      event.preventDefault();
      scrollPrev();
    } else if (event.key === "ArrowRight") {
      event.preventDefault();
      scrollNext();
    }
  }, [scrollPrev, scrollNext]);

  React.useEffect(() => {
    if (api && setApi)
      setApi(api);
  }, [api, setApi]);

  React.useEffect(() => {
    if (!api)
      return undefined;
    onSelect(api);
    api.on("reInit", onSelect);
    api.on("select", onSelect);
    return () => {
      api.off("reInit", onSelect);
      api.off("select", onSelect);
    };
  }, [api, onSelect]);

  const context = {
    carouselRef, api, opts, orientation: orientation || (opts?.axis === "y" ? "vertical" : "horizontal"),
    scrollPrev, scrollNext, canScrollPrev, canScrollNext,
  };
  return (
    <CarouselContext.Provider value={context}>
      <div ref={ref} onKeyDownCapture={onKeyDown} className={cn("relative", className)} role="region"
        aria-roledescription="carousel" {...props}>
        {children}
      </div>
    </CarouselContext.Provider>
  );
});

export const CarouselContent = React.forwardRef(function CarouselContent({ className, ...props }, ref) {
  const { carouselRef, orientation } = useCarousel();
  return (
    <div ref={carouselRef} className="overflow-hidden">
      <div ref={ref} className={cn("flex", orientation === "horizontal" ? "-ml-4" : "-mt-4 flex-col", className)}
        {...props} />
    </div>
  );
});

export const CarouselItem = React.forwardRef(function CarouselItem({ className, ...props }, ref) {
  const { orientation } = useCarousel();
  return <div ref={ref} role="group" aria-roledescription="slide"
    className={cn("min-w-0 shrink-0 grow-0 basis-full", orientation === "horizontal" ? "pl-4" : "pt-4", className)}
    {...props} />;
});

// The previous and next buttons differ only in their side and icon.
function stepButton(step, Icon, label, horizontalPlace, verticalPlace, displayName) {
  const Component = React.forwardRef(function CarouselStep(
    { className, variant = "outline", size = "icon", ...props }, ref) {
    const carousel = useCarousel();
    const [scroll, canScroll] = step === "prev"
      ? [carousel.scrollPrev, carousel.canScrollPrev]
      : [carousel.scrollNext, carousel.canScrollNext];
    return (
      <Button ref={ref} variant={variant} size={size} disabled={!canScroll} onClick={scroll}
        className={cn("absolute h-8 w-8 rounded-full",
          carousel.orientation === "horizontal" ? horizontalPlace : verticalPlace, className)}
        {...props}>
        <Icon className="h-4 w-4" />
        <span className="sr-only">{label}</span>
      </Button>
    );
  });
  Component.displayName = displayName;
  return Component;
}

export const CarouselPrevious = stepButton("prev", ArrowLeft, "Previous slide",
  "-left-12 top-1/2 -translate-y-1/2", "-top-12 left-1/2 -translate-x-1/2 rotate-90", "CarouselPrevious");
export const CarouselNext = stepButton("next", ArrowRight, "Next slide",
  "-right-12 top-1/2 -translate-y-1/2", "-bottom-12 left-1/2 -translate-x-1/2 rotate-90", "CarouselNext");
