#pragma once

#include "library/color.h"
#include "model/artifact.h"

#include <array>
#include <gtkmm/drawingarea.h>

namespace kelmo {

// The picture area of a card: the type's gradient from the top-leading to the
// bottom-trailing corner, and over it six faint spokes 60° apart around a small
// dot in the centre. The spokes reach 0.45 of the width, so on a wide card they
// run past the top and bottom edges and are cut off there.
class CardThumbnail : public Gtk::DrawingArea {
public:
    static constexpr int height = 150;

    CardThumbnail();
    void setType(ArtifactType::Kind kind);
    // A picture of the artifact's first screen, drawn in place of the gradient, its
    // top edge showing; none brings the gradient back.
    void setPicture(Cairo::RefPtr<Cairo::ImageSurface> picture);
    bool hasPicture() const { return bool(picture_); }

private:
    void draw(const Cairo::RefPtr<Cairo::Context>& cr, int width, int height) const;

    std::array<Color, 2> colors_;
    Cairo::RefPtr<Cairo::ImageSurface> picture_;
};

} // namespace kelmo
