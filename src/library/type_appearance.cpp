#include "library/type_appearance.h"

#include "library/palette.h"

namespace kelmo {

const TypeAppearance& typeAppearance(ArtifactType::Kind kind) {
    static const TypeAppearance html{
        "HTML", Color{"#0ea5e9"}, {Color{"#1a2744"}, Color{"#0f1829"}}, "globe", "html"};
    static const TypeAppearance jsx{
        "JSX", Color{"#f59e0b"}, {Color{"#1a1a2e"}, Color{"#16213e"}}, "bolt.circle", "jsx"};
    static const TypeAppearance tsx{"TSX",
                                    appOrangePrimary(),
                                    {Color{"#2d1b1b"}, Color{"#1a0f0f"}},
                                    "chevron.left.forwardslash.chevron.right",
                                    "tsx"};
    switch (kind) {
    case ArtifactType::Kind::jsx:
        return jsx;
    case ArtifactType::Kind::tsx:
        return tsx;
    case ArtifactType::Kind::html:
        break;
    }
    return html;
}

} // namespace kelmo
