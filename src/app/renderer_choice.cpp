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

} // namespace kelmo
