#pragma once

#include <array>
#include <optional>
#include <string_view>

namespace kelmo {

// The simulated device width the player runs an artifact at. The widths and picker
// labels belong to the player, which picks them by case.
enum class ViewportMode { desktop, tablet, phone };

// Every mode, in the picker's order.
inline constexpr std::array<ViewportMode, 3> allViewportModes{
    ViewportMode::desktop, ViewportMode::tablet, ViewportMode::phone};

// "Desktop", "Tablet" or "Phone".
std::string_view rawValue(ViewportMode mode);

// The mode of exactly one of the three raw values (case-sensitive); none for any other text.
std::optional<ViewportMode> viewportModeFromRawValue(std::string_view text);

} // namespace kelmo
