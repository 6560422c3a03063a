#include "library/headered_scrollable.h"

#include <algorithm>

namespace kelmo {

HeaderedScrollable::HeaderedScrollable(Gtk::Widget& header)
    : Glib::ObjectBase{"KelmoHeaderedScrollable"}, header_{header},
      itemsAdjustment_{Gtk::Adjustment::create(0, 0, 0)} {
    // The scrolled-away header neither shows nor takes clicks.
    set_overflow(Gtk::Overflow::HIDDEN);
    header_.set_parent(*this);
    property_hadjustment().signal_changed().connect([this] { adjustmentsChanged(); });
    property_vadjustment().signal_changed().connect([this] { adjustmentsChanged(); });
    itemsScrolled_ = itemsAdjustment_->signal_value_changed().connect([this] { itemsScrolled(); });
    // A managed parent is finalized before this destructor runs; the children go first.
    signal_destroy().connect([this] { unparentChildren(); });
}

HeaderedScrollable::~HeaderedScrollable() {
    pageScrolled_.disconnect();
    itemsScrolled_.disconnect();
    unparentChildren();
}

void HeaderedScrollable::unparentChildren() {
    if (items_ && items_->get_parent() == this)
        items_->unparent();
    if (header_.get_parent() == this)
        header_.unparent();
}

Glib::RefPtr<Gtk::Adjustment> HeaderedScrollable::pageAdjustment() const {
    return const_cast<HeaderedScrollable*>(this)->get_vadjustment();
}

void HeaderedScrollable::setItems(Gtk::Widget& items) {
    if (items_ == &items)
        return;
    if (items_)
        items_->unparent();
    items_ = &items;
    items_->set_parent(*this);
    if (auto* scrollable = dynamic_cast<Gtk::Scrollable*>(items_)) {
        scrollable->set_vadjustment(itemsAdjustment_);
        if (const auto across = get_hadjustment())
            scrollable->set_hadjustment(across);
    }
    queue_resize();
}

void HeaderedScrollable::adjustmentsChanged() {
    if (auto* scrollable = dynamic_cast<Gtk::Scrollable*>(items_))
        if (const auto across = get_hadjustment())
            scrollable->set_hadjustment(across);
    pageScrolled_.disconnect();
    if (const auto page = pageAdjustment())
        pageScrolled_ = page->signal_value_changed().connect([this] {
            if (!allocating_)
                queue_allocate();
        });
    queue_allocate();
}

void HeaderedScrollable::itemsScrolled() {
    // The items scroll themselves to show the focused cell; the page follows.
    const auto page = pageAdjustment();
    if (allocating_ || !page)
        return;
    const double value = itemsAdjustment_->get_value();
    if (value > 0 || page->get_value() > headerHeight_)
        page->set_value(headerHeight_ + value);
}

void HeaderedScrollable::set_focus_child_vfunc(Gtk::Widget* child) {
    Gtk::Widget::set_focus_child_vfunc(child);
    // The keyboard brings the header back into view.
    if (const auto page = pageAdjustment(); page && child == &header_)
        page->set_value(0);
}

Gtk::SizeRequestMode HeaderedScrollable::get_request_mode_vfunc() const {
    return Gtk::SizeRequestMode::HEIGHT_FOR_WIDTH;
}

void HeaderedScrollable::measure_vfunc(Gtk::Orientation orientation, int forSize, int& minimum,
                                       int& natural, int& minimumBaseline,
                                       int& naturalBaseline) const {
    minimumBaseline = naturalBaseline = -1;
    int ignored = 0;
    header_.measure(orientation, forSize, minimum, natural, ignored, ignored);
    if (!items_)
        return;
    int itemsMinimum = 0, itemsNatural = 0;
    items_->measure(orientation, forSize, itemsMinimum, itemsNatural, ignored, ignored);
    if (orientation == Gtk::Orientation::VERTICAL) {
        minimum += itemsMinimum;
        natural += itemsNatural;
    } else {
        minimum = std::max(minimum, itemsMinimum);
        natural = std::max(natural, itemsNatural);
    }
}

void HeaderedScrollable::size_allocate_vfunc(int width, int height, int baseline) {
    allocating_ = true;
    const auto page = pageAdjustment();
    int ignored = 0;
    headerHeight_ = 0;
    if (header_.get_visible())
        header_.measure(Gtk::Orientation::VERTICAL, width, ignored, headerHeight_, ignored,
                        ignored);
    const double value = page ? std::max(0.0, page->get_value()) : 0.0;
    const int headerScrolled = std::min(static_cast<int>(value), headerHeight_);
    if (header_.get_visible())
        header_.size_allocate(Gtk::Allocation{0, -headerScrolled, width, headerHeight_}, baseline);

    // The items take what the header leaves of the page and scroll by the rest.
    const int itemsTop = headerHeight_ - headerScrolled;
    if (items_) {
        itemsAdjustment_->set_value(std::max(0.0, value - headerHeight_));
        items_->size_allocate(Gtk::Allocation{0, itemsTop, width, std::max(0, height - itemsTop)},
                              -1);
    }
    if (page) {
        const double upper = headerHeight_ + (items_ ? itemsAdjustment_->get_upper() : 0.0);
        page->configure(std::clamp(value, 0.0, std::max(0.0, upper - height)), 0, upper,
                        height * 0.1, height * 0.9, height);
    }
    allocating_ = false;
}

} // namespace kelmo
