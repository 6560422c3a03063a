#pragma once

#include "library/card_thumbnail.h"
#include "library/type_badge.h"
#include "model/artifact.h"
#include "store/artifact_store.h"

#include <gtkmm/box.h>
#include <gtkmm/button.h>
#include <gtkmm/image.h>
#include <gtkmm/label.h>
#include <gtkmm/overlay.h>
#include <optional>
#include <sigc++/connection.h>

namespace kelmo {

// One artifact as a card of the library grid: the type's thumbnail with a star
// that toggles the favourite, then the name, the file's size and age, and the
// type badge. It fills its grid column up to 260 wide and follows the store
// (favourite star, size, date) for as long as it shows an artifact.
//
// The grid recycles cards: show() hands a card the artifact of the cell it now
// fills and clear() takes it away again.
class ArtifactCardView : public Gtk::Widget {
public:
    explicit ArtifactCardView(ArtifactStore& store);
    ArtifactCardView(ArtifactStore& store, const Artifact& artifact);
    ~ArtifactCardView() override;
    ArtifactCardView(const ArtifactCardView&) = delete;
    ArtifactCardView& operator=(const ArtifactCardView&) = delete;

    void show(const Artifact& artifact);
    void clear();
    const std::optional<Artifact>& artifact() const { return artifact_; }

private:
    void refresh();
    void showPicture();
    void measure_vfunc(Gtk::Orientation orientation, int forSize, int& minimum, int& natural,
                       int& minimumBaseline, int& naturalBaseline) const override;
    void size_allocate_vfunc(int width, int height, int baseline) override;

    ArtifactStore& store_;
    std::optional<Artifact> artifact_;
    sigc::connection storeChanged_;
    sigc::connection pictureKept_;

    Gtk::Box content_{Gtk::Orientation::VERTICAL, 0};
    Gtk::Overlay top_;
    CardThumbnail thumbnailArea_;
    Gtk::Image symbol_;
    Gtk::Button star_;
    Gtk::Image starImage_;
    Gtk::Box info_{Gtk::Orientation::HORIZONTAL, 0};
    Gtk::Box texts_{Gtk::Orientation::VERTICAL, 3};
    Gtk::Label name_;
    Gtk::Box details_{Gtk::Orientation::HORIZONTAL, 6};
    Gtk::Label size_;
    Gtk::Label separator_{"·"};
    Gtk::Label date_;
    Gtk::Box spacer_;
    TypeBadge badge_{ArtifactType{}};
};

} // namespace kelmo
