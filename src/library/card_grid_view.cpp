#include "library/card_grid_view.h"

#include "library/library_rules.h"

#include <algorithm>

namespace kelmo {

CardGridView::CardGridView() {
    set_min_columns(1);
    set_max_columns(1);
}

void CardGridView::measure_vfunc(Gtk::Orientation orientation, int forSize, int& minimum,
                                 int& natural, int& minimumBaseline, int& naturalBaseline) const {
    Gtk::GridView::measure_vfunc(orientation, forSize, minimum, natural, minimumBaseline,
                                 naturalBaseline);
    if (orientation == Gtk::Orientation::HORIZONTAL) {
        minimum = std::min(minimum, card_grid::minimumCardWidth + card_grid::gap);
        natural = std::max(natural, minimum);
    }
}

void CardGridView::size_allocate_vfunc(int width, int height, int baseline) {
    const int columns = adaptiveColumnCount(width);
    if (columns != columns_) {
        // The grid reads both bounds during this very layout; the order keeps the
        // minimum from passing the maximum in between.
        if (columns > columns_) {
            set_max_columns(static_cast<guint>(columns));
            set_min_columns(static_cast<guint>(columns));
        } else {
            set_min_columns(static_cast<guint>(columns));
            set_max_columns(static_cast<guint>(columns));
        }
        columns_ = columns;
    }
    Gtk::GridView::size_allocate_vfunc(width, height, baseline);
}

} // namespace kelmo
