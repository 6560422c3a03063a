#pragma once

#include <filesystem>
#include <functional>
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

// Whether the machine has a graphics device that OpenGL could run on: a DRM device
// (devices/dri) or NVIDIA's own (devices/nvidiactl).
bool hasGraphicsDevice(const std::filesystem::path& devices = "/dev");

// Without a graphics device OpenGL can only be a software rasteriser, and loading it
// (Mesa and LLVM) makes GTK's initialisation take twice as long. There GDK is told to
// leave OpenGL alone and the windows draw with cairo. Call before GTK initialises, and
// the returned function once it has: it takes the setting back out of the environment,
// so that programs started later (web processes among them) do not inherit it. WebKit
// is told that there is no render node and to share its frames through memory, as it
// would find out for itself at a cost. The user's own GSK_RENDERER or GDK_DEBUG always
// wins.
std::function<void()> skipOpenGLWithoutGraphicsDevice();

} // namespace kelmo
