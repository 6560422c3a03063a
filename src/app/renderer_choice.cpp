#include "app/renderer_choice.h"

#include <algorithm>
#include <array>
#include <epoxy/gl.h>
#include <gdk/gdk.h>
#include <glib.h>
#include <string>

namespace kelmo {

bool isSoftwareRenderer(std::string_view glRenderer) {
    std::string lowered{glRenderer};
    std::transform(lowered.begin(), lowered.end(), lowered.begin(),
                   [](unsigned char c) { return static_cast<char>(g_ascii_tolower(c)); });
    constexpr std::array<std::string_view, 3> softwareNames{"llvmpipe", "softpipe", "swrast"};
    return std::any_of(softwareNames.begin(), softwareNames.end(), [&](std::string_view name) {
        return lowered.find(name) != std::string::npos;
    });
}

void preferCairoOnSoftwareRendering(const Glib::RefPtr<Gdk::Display>& display) {
    if (!display || g_getenv("GSK_RENDERER"))
        return;
    GError* error = nullptr;
    GdkGLContext* context = gdk_display_create_gl_context(display->gobj(), &error);
    if (!context) {
        // No OpenGL at all: GTK falls back to cairo by itself.
        g_clear_error(&error);
        return;
    }
    std::string renderer;
    if (gdk_gl_context_realize(context, &error)) {
        gdk_gl_context_make_current(context);
        if (const auto* name = glGetString(GL_RENDERER))
            renderer = reinterpret_cast<const char*>(name);
        gdk_gl_context_clear_current();
    }
    g_clear_error(&error);
    g_object_unref(context);
    if (isSoftwareRenderer(renderer))
        g_setenv("GSK_RENDERER", "cairo", TRUE);
}

bool hasGraphicsDevice(const std::filesystem::path& devices) {
    std::error_code error;
    const std::filesystem::directory_iterator dri{devices / "dri", error};
    if (!error && dri != std::filesystem::directory_iterator{})
        return true;
    return std::filesystem::exists(devices / "nvidiactl", error);
}

std::function<void()> skipOpenGLWithoutGraphicsDevice() {
    if (hasGraphicsDevice())
        return [] {};
    // Before its first web process starts, WebKit asks OpenGL for the render node to
    // hand it, loading Mesa's software rasteriser on the main thread to hear that there
    // is none. A device that opens nothing tells it so at once; pages keep WebGL, which
    // the web process sets up by itself.
    g_setenv("WEBKIT_WEB_RENDER_DEVICE_FILE", "/dev/null", FALSE);
    if (g_getenv("GSK_RENDERER") || g_getenv("GDK_DEBUG"))
        return [] {};
    g_setenv("GDK_DEBUG", "gl-disable", TRUE);
    g_setenv("GSK_RENDERER", "cairo", TRUE);
    // WebKit's DMA-BUF renderer needs OpenGL in GTK; without it WebKit would fall back to
    // shared memory by itself, with a warning on every start.
    g_setenv("WEBKIT_DISABLE_DMABUF_RENDERER", "1", FALSE);
    return [] { g_unsetenv("GDK_DEBUG"); };
}

} // namespace kelmo
