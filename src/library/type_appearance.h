#pragma once

#include "library/color.h"
#include "model/artifact.h"

#include <array>
#include <string_view>

namespace kelmo {

// How an artifact's type looks wherever it is shown: the badge's text and colour,
// the card thumbnail's gradient (top-leading to bottom-trailing) and its symbol.
// The type's kind alone decides; the location it carries plays no part.
struct TypeAppearance {
    std::string_view badgeText;
    Color badgeColor;
    std::array<Color, 2> thumbnailColors;
    std::string_view cardSymbol; // a design symbol name, see symbolIconName()
    std::string_view cssClass;   // "html", "jsx" or "tsx"
};

const TypeAppearance& typeAppearance(ArtifactType::Kind kind);

} // namespace kelmo
