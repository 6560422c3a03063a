#include "library/library_rules.h"

#include <algorithm>

namespace kelmo {

int adaptiveColumnCount(int width) {
    return std::max(1, width / (card_grid::minimumCardWidth + card_grid::gap));
}

ListSplice spliceToMatch(const std::vector<Uuid>& shown, const std::vector<Uuid>& wanted) {
    std::size_t leading = 0;
    const std::size_t shorter = std::min(shown.size(), wanted.size());
    while (leading < shorter && shown[leading] == wanted[leading])
        ++leading;
    std::size_t trailing = 0;
    while (trailing < shorter - leading &&
           shown[shown.size() - 1 - trailing] == wanted[wanted.size() - 1 - trailing])
        ++trailing;
    return ListSplice{leading, shown.size() - leading - trailing,
                      wanted.size() - leading - trailing};
}

} // namespace kelmo
