#pragma once

#include "model/artifact.h"

#include <gtkmm/label.h>

namespace kelmo {

// The coloured label of an artifact's type ("HTML", "JSX", "TSX") used by cards,
// rows and the player's toolbar. Its look comes from the stylesheet's .type-badge
// rules, one per type class.
class TypeBadge : public Gtk::Label {
public:
    explicit TypeBadge(const ArtifactType& type);
    void setType(const ArtifactType& type);
};

} // namespace kelmo
