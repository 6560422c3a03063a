#pragma once

#include "model/uuid.h"

#include <cstddef>
#include <vector>

namespace kelmo {

// The library grid's columns: each card between 200 and 260 wide, 14 apart.
namespace card_grid {
inline constexpr int minimumCardWidth = 200;
inline constexpr int maximumCardWidth = 260;
inline constexpr int gap = 14;
} // namespace card_grid

// How many card columns fit a grid whose cells share the given width. Every cell
// carries half a gap on each side, so n columns need n × (200 + 14); at least one
// column is always laid out.
int adaptiveColumnCount(int width);

// The one replacement that turns the shown list of ids into the wanted one: the
// items from `position` on, `removed` of them, give way to wanted[position] and
// the `added` ids after it. Common leading and trailing runs stay in place.
struct ListSplice {
    std::size_t position = 0;
    std::size_t removed = 0;
    std::size_t added = 0;

    bool empty() const { return removed == 0 && added == 0; }
    bool operator==(const ListSplice&) const = default;
};

ListSplice spliceToMatch(const std::vector<Uuid>& shown, const std::vector<Uuid>& wanted);

} // namespace kelmo
