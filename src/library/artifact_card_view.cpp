#include "library/artifact_card_view.h"

#include "library/accessible_name.h"
#include "library/app_style.h"
#include "library/artifact_text.h"
#include "library/card_pictures.h"
#include "library/library_rules.h"
#include "library/symbols.h"
#include "library/type_appearance.h"

#include <algorithm>

namespace kelmo {

ArtifactCardView::ArtifactCardView(ArtifactStore& store) : store_{store} {
    add_css_class("artifact-card");
    // The rounded outline clips the thumbnail's top corners.
    set_overflow(Gtk::Overflow::HIDDEN);
    set_halign(Gtk::Align::CENTER);
    set_valign(Gtk::Align::START);

    top_.set_child(thumbnailArea_);
    symbol_.set_pixel_size(22);
    symbol_.add_css_class("card-symbol");
    symbol_.set_halign(Gtk::Align::CENTER);
    symbol_.set_valign(Gtk::Align::CENTER);
    symbol_.set_can_target(false);
    top_.add_overlay(symbol_);

    starImage_.set_pixel_size(12);
    star_.set_child(starImage_);
    star_.set_has_frame(false);
    star_.set_focus_on_click(false);
    star_.add_css_class("card-star-button");
    star_.set_halign(Gtk::Align::END);
    star_.set_valign(Gtk::Align::START);
    star_.set_margin(8);
    // The star takes its own click, so toggling a favourite never selects the card.
    star_.signal_clicked().connect([this] {
        if (artifact_) {
            const Artifact artifact = *artifact_;
            store_.toggleFavorite(artifact);
        }
    });
    top_.add_overlay(star_);
    content_.append(top_);

    info_.add_css_class("artifact-card-info");
    name_.set_xalign(0);
    name_.set_single_line_mode(true);
    name_.set_ellipsize(Pango::EllipsizeMode::END);
    name_.add_css_class("artifact-card-name");
    texts_.append(name_);
    date_.set_ellipsize(Pango::EllipsizeMode::END);
    for (auto* detail : {&size_, &separator_, &date_}) {
        detail->add_css_class("artifact-card-detail");
        details_.append(*detail);
    }
    texts_.append(details_);
    texts_.set_valign(Gtk::Align::CENTER);
    info_.append(texts_);
    spacer_.set_hexpand(true);
    spacer_.set_size_request(8, -1);
    info_.append(spacer_);
    info_.append(badge_);
    content_.append(info_);
    content_.set_parent(*this);
    // A managed card is finalized before its destructor runs; the content leaves first.
    signal_destroy().connect([this] {
        if (content_.get_parent())
            content_.unparent();
    });
}

ArtifactCardView::ArtifactCardView(ArtifactStore& store, const Artifact& artifact)
    : ArtifactCardView{store} {
    show(artifact);
}

ArtifactCardView::~ArtifactCardView() {
    storeChanged_.disconnect();
    pictureKept_.disconnect();
    if (content_.get_parent())
        content_.unparent();
}

void ArtifactCardView::show(const Artifact& artifact) {
    artifact_ = artifact;
    const TypeAppearance& appearance = typeAppearance(artifact.type.kind);
    thumbnailArea_.setType(artifact.type.kind);
    showPicture();
    symbol_.set_from_icon_name(symbolIconName(appearance.cardSymbol));
    name_.set_text(artifact.name);
    badge_.setType(artifact.type);
    if (!storeChanged_.connected())
        storeChanged_ = store_.signalChanged().connect([this] { refresh(); });
    refresh();
}

// The picture of the artifact's first screen, once it has run; the type's thumbnail
// until then. A recycled card may get its answer after it moved on: it is dropped.
void ArtifactCardView::showPicture() {
    CardPictures::shared().showIn(
        *this, pictureKept_,
        [this] { return artifact_ ? std::optional{artifact_->path()} : std::nullopt; },
        [this](CardPictures::Picture picture) {
            thumbnailArea_.setPicture(picture);
            symbol_.set_visible(!picture);
        });
}

void ArtifactCardView::clear() {
    storeChanged_.disconnect();
    artifact_.reset();
}

void ArtifactCardView::refresh() {
    if (!artifact_)
        return;
    const bool favorite = store_.isFavorite(*artifact_);
    starImage_.set_from_icon_name(symbolIconName(favorite ? "star.fill" : "star"));
    setTooltipAndName(star_, favorite ? "Remove from Favorites" : "Add to Favorites");
    if (favorite)
        star_.add_css_class("favorite");
    else
        star_.remove_css_class("favorite");
    // Size and age are read again on every change, never kept.
    size_.set_text(fileSizeString(fileSizeOrZero(artifact_->path())));
    date_.set_text(relativeDateString(artifact_->modifiedAt));
    const std::string summary = itemSummary(*artifact_, date_.get_text());
    setAccessibleName(*this, summary);
    // The grid's cell around this view is what takes the keyboard focus.
    if (auto* cell = get_parent())
        setAccessibleName(*cell, summary);
}

void ArtifactCardView::measure_vfunc(Gtk::Orientation orientation, int forSize, int& minimum,
                                     int& natural, int& minimumBaseline,
                                     int& naturalBaseline) const {
    content_.measure(orientation, forSize, minimum, natural, minimumBaseline, naturalBaseline);
    // A card fills its column but grows no wider than the widest column; a long
    // name is cut rather than widening it.
    if (orientation == Gtk::Orientation::HORIZONTAL)
        natural = std::max(minimum, card_grid::maximumCardWidth);
}

void ArtifactCardView::size_allocate_vfunc(int width, int height, int baseline) {
    content_.size_allocate(Gtk::Allocation{0, 0, width, height}, baseline);
}

} // namespace kelmo
