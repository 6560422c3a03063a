#include "library/artifact_row_view.h"

#include "library/accessible_name.h"
#include "library/artifact_text.h"
#include "library/card_pictures.h"
#include "library/symbols.h"

namespace kelmo {

ArtifactRowView::ArtifactRowView(ArtifactStore& store)
    : Gtk::Box{Gtk::Orientation::HORIZONTAL, 10}, store_{store} {
    add_css_class("artifact-row");
    picture_.add_css_class("artifact-row-picture");
    picture_.set_content_width(48);
    picture_.set_content_height(28);
    picture_.set_valign(Gtk::Align::CENTER);
    picture_.set_overflow(Gtk::Overflow::HIDDEN); // the rounded corners clip the picture
    picture_.set_draw_func([this](const Cairo::RefPtr<Cairo::Context>& cr, int width, int) {
        if (!pictureSurface_)
            return;
        const double scale = static_cast<double>(width) / pictureSurface_->get_width();
        cr->scale(scale, scale);
        cr->set_source(pictureSurface_, 0, 0);
        cr->paint();
    });
    append(picture_);
    append(badge_);

    name_.set_xalign(0);
    name_.set_single_line_mode(true);
    name_.set_ellipsize(Pango::EllipsizeMode::END);
    name_.add_css_class("artifact-row-name");
    date_.set_xalign(0);
    date_.add_css_class("artifact-row-date");
    texts_.append(name_);
    texts_.append(date_);
    texts_.set_valign(Gtk::Align::CENTER);
    append(texts_);

    spacer_.set_hexpand(true);
    append(spacer_);

    favoriteStar_.set_from_icon_name(symbolIconName("star.fill"));
    favoriteStar_.set_pixel_size(10);
    favoriteStar_.add_css_class("artifact-row-star");
    favoriteStar_.set_valign(Gtk::Align::CENTER);
    append(favoriteStar_);
}

ArtifactRowView::ArtifactRowView(ArtifactStore& store, const Artifact& artifact)
    : ArtifactRowView{store} {
    show(artifact);
}

ArtifactRowView::~ArtifactRowView() {
    storeChanged_.disconnect();
    pictureKept_.disconnect();
}

// As on the card: the picture once there is one, for the row's artifact only.
void ArtifactRowView::showPicture() {
    CardPictures::shared().showIn(
        *this, pictureKept_,
        [this] { return artifact_ ? std::optional{artifact_->path()} : std::nullopt; },
        [this](CardPictures::Picture picture) {
            pictureSurface_ = picture;
            picture_.queue_draw();
        });
}

void ArtifactRowView::show(const Artifact& artifact) {
    artifact_ = artifact;
    badge_.setType(artifact.type);
    name_.set_text(artifact.name);
    showPicture();
    if (!storeChanged_.connected())
        storeChanged_ = store_.signalChanged().connect([this] { refresh(); });
    refresh();
}

void ArtifactRowView::clear() {
    storeChanged_.disconnect();
    artifact_.reset();
}

bool ArtifactRowView::isSelected() const {
    const auto& selected = store_.selectedArtifact();
    return artifact_ && selected && selected->id == artifact_->id;
}

void ArtifactRowView::refresh() {
    if (!artifact_)
        return;
    if (isSelected())
        add_css_class("selected");
    else
        remove_css_class("selected");
    favoriteStar_.set_visible(store_.isFavorite(*artifact_));
    date_.set_text(relativeDateString(artifact_->modifiedAt));
    const std::string summary = itemSummary(*artifact_, date_.get_text());
    setAccessibleName(*this, summary);
    // The list's cell around this view is what takes the keyboard focus.
    if (auto* cell = get_parent())
        setAccessibleName(*cell, summary);
}

} // namespace kelmo
