#pragma once

#include <gtkmm/gridview.h>

namespace kelmo {

// The library grid: a recycling grid view whose column count follows its width,
// as many columns as fit with each card at least 200 wide and 14 apart (each cell
// carries half of the gap on either side). Its minimum width is one column, so the
// window can always shrink it.
class CardGridView : public Gtk::GridView {
public:
    CardGridView();

    // The column count of the last layout.
    int columnCount() const { return columns_; }

private:
    void measure_vfunc(Gtk::Orientation orientation, int forSize, int& minimum, int& natural,
                       int& minimumBaseline, int& naturalBaseline) const override;
    void size_allocate_vfunc(int width, int height, int baseline) override;

    int columns_ = 1;
};

} // namespace kelmo
