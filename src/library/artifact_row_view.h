#pragma once

#include "library/type_badge.h"
#include "model/artifact.h"
#include "store/artifact_store.h"

#include <gtkmm/box.h>
#include <gtkmm/drawingarea.h>
#include <gtkmm/image.h>
#include <gtkmm/label.h>
#include <optional>
#include <sigc++/connection.h>

namespace kelmo {

// One artifact as a row of the library list: type badge, name and age, and a
// small star for a favourite. The row of the selected artifact is tinted and
// outlined, its name in the accent colour. Like a card, a row is recycled through
// show() and clear() and follows the store while it shows an artifact.
class ArtifactRowView : public Gtk::Box {
public:
    explicit ArtifactRowView(ArtifactStore& store);
    ArtifactRowView(ArtifactStore& store, const Artifact& artifact);
    ~ArtifactRowView() override;
    ArtifactRowView(const ArtifactRowView&) = delete;
    ArtifactRowView& operator=(const ArtifactRowView&) = delete;

    void show(const Artifact& artifact);
    void clear();
    const std::optional<Artifact>& artifact() const { return artifact_; }

    // Whether the row shows the picture of its artifact's first screen.
    bool hasPicture() const { return bool(pictureSurface_); }

    // Whether the store's selected artifact is the one this row shows.
    bool isSelected() const;

private:
    void refresh();
    void showPicture();

    ArtifactStore& store_;
    std::optional<Artifact> artifact_;
    sigc::connection storeChanged_;
    sigc::connection pictureKept_;
    // The card's picture, small, once the artifact has run; an empty plate until then,
    // so that the rows' texts line up.
    Gtk::DrawingArea picture_;
    Cairo::RefPtr<Cairo::ImageSurface> pictureSurface_;

    TypeBadge badge_{ArtifactType{}};
    Gtk::Box texts_{Gtk::Orientation::VERTICAL, 2};
    Gtk::Label name_;
    Gtk::Label date_;
    Gtk::Box spacer_;
    Gtk::Image favoriteStar_;
};

} // namespace kelmo
