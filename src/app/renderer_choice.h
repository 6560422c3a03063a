#pragma once

#include <gdkmm/display.h>
#include <glibmm/refptr.h>
#include <string_view>

namespace kelmo {

// Whether an OpenGL renderer string names a software rasteriser (Mesa's llvmpipe,
// softpipe or swrast), as on machines and virtual machines without a GPU.
bool isSoftwareRenderer(std::string_view glRenderer);

// On a software OpenGL renderer GTK would draw every frame of every animation on
// the CPU, taking it from the web processes that run the artifacts; there the
// windows draw with cairo instead. Call before the first window is realized. The
// user's own GSK_RENDERER always wins.
void preferCairoOnSoftwareRendering(const Glib::RefPtr<Gdk::Display>& display);

} // namespace kelmo
