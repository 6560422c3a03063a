#include "library/type_badge.h"

#include "library/type_appearance.h"

namespace kelmo {

TypeBadge::TypeBadge(const ArtifactType& type) {
    add_css_class("type-badge");
    set_valign(Gtk::Align::CENTER);
    set_halign(Gtk::Align::START);
    setType(type);
}

void TypeBadge::setType(const ArtifactType& type) {
    for (const auto kind :
         {ArtifactType::Kind::html, ArtifactType::Kind::jsx, ArtifactType::Kind::tsx})
        remove_css_class(std::string{typeAppearance(kind).cssClass});
    const TypeAppearance& appearance = typeAppearance(type.kind);
    add_css_class(std::string{appearance.cssClass});
    set_text(std::string{appearance.badgeText});
}

} // namespace kelmo
