#include "runtime/viewport_mode.h"

namespace kelmo {

std::string_view rawValue(ViewportMode mode) {
    switch (mode) {
    case ViewportMode::desktop:
        return "Desktop";
    case ViewportMode::tablet:
        return "Tablet";
    case ViewportMode::phone:
        return "Phone";
    }
    return "Desktop";
}

std::optional<ViewportMode> viewportModeFromRawValue(std::string_view text) {
    for (const ViewportMode mode : allViewportModes)
        if (rawValue(mode) == text)
            return mode;
    return std::nullopt;
}

} // namespace kelmo
