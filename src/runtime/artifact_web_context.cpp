#include "runtime/artifact_web_context.h"

#include "runtime/web_view_schemes.h"

#include <algorithm>
#include <unistd.h>

namespace kelmo {

unsigned webProcessMemoryLimit() {
    const long pages = ::sysconf(_SC_PHYS_PAGES);
    const long pageSize = ::sysconf(_SC_PAGESIZE);
    if (pages <= 0 || pageSize <= 0)
        return 2048;
    const auto megabytes = static_cast<unsigned long long>(pages) *
                           static_cast<unsigned long long>(pageSize) / (1024 * 1024);
    return static_cast<unsigned>(std::clamp<unsigned long long>(megabytes / 4, 1024, 4096));
}

WebKitWebContext* artifactWebContext() {
    static WebKitWebContext* const context = [] {
        WebKitMemoryPressureSettings* pressure = webkit_memory_pressure_settings_new();
        webkit_memory_pressure_settings_set_memory_limit(pressure, webProcessMemoryLimit());
        // Caches are released only near the limit, so ordinary pages keep their speed;
        // past it the process is ended. Usage is looked at every second.
        // (Each threshold must stay between its neighbours as it is set.)
        webkit_memory_pressure_settings_set_kill_threshold(pressure, 1.0);
        webkit_memory_pressure_settings_set_strict_threshold(pressure, 0.9);
        webkit_memory_pressure_settings_set_conservative_threshold(pressure, 0.8);
        webkit_memory_pressure_settings_set_poll_interval(pressure, 1.0);
        auto* made = WEBKIT_WEB_CONTEXT(
            g_object_new(WEBKIT_TYPE_WEB_CONTEXT, "memory-pressure-settings", pressure, nullptr));
        webkit_memory_pressure_settings_free(pressure);
        registerArtifactSchemes(made);
        return made;
    }();
    return context;
}

} // namespace kelmo
