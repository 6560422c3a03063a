#pragma once

#include <gtkmm/adjustment.h>
#include <gtkmm/scrollable.h>
#include <gtkmm/widget.h>
#include <sigc++/connection.h>

namespace kelmo {

// A header above a recycling grid or list, scrolled as one page inside a scrolled
// window: the header scrolls away first, then the items. The items view stays the
// scrolled window's scrollable in all but name, so it still builds only the cells on
// screen; a view inside a plain box would build them all.
class HeaderedScrollable : public Gtk::Scrollable, public Gtk::Widget {
public:
    // The header goes first in the keyboard order; the view takes it as it is.
    explicit HeaderedScrollable(Gtk::Widget& header);
    ~HeaderedScrollable() override;
    HeaderedScrollable(const HeaderedScrollable&) = delete;
    HeaderedScrollable& operator=(const HeaderedScrollable&) = delete;

    // The grid or list under the header, in place of the one before (which is let go).
    void setItems(Gtk::Widget& items);

private:
    Gtk::SizeRequestMode get_request_mode_vfunc() const override;
    void measure_vfunc(Gtk::Orientation orientation, int forSize, int& minimum, int& natural,
                       int& minimumBaseline, int& naturalBaseline) const override;
    void size_allocate_vfunc(int width, int height, int baseline) override;
    void set_focus_child_vfunc(Gtk::Widget* child) override;

    // The scrolled window's adjustments, which glibmm keeps for the interface.
    Glib::RefPtr<Gtk::Adjustment> pageAdjustment() const;
    void adjustmentsChanged();
    void itemsScrolled();
    void unparentChildren();

    Gtk::Widget& header_;
    Gtk::Widget* items_ = nullptr;
    // The items scroll by their own adjustment, the page's value less the header.
    Glib::RefPtr<Gtk::Adjustment> itemsAdjustment_;
    int headerHeight_ = 0;
    bool allocating_ = false;
    sigc::connection pageScrolled_;
    sigc::connection itemsScrolled_;
};

} // namespace kelmo
