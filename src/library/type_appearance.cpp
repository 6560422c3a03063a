#include "library/type_appearance.h"

#include "library/palette.h"

namespace kelmo {

const TypeAppearance& typeAppearance(ArtifactType::Kind kind) {
    static const TypeAppearance html{"HTML",
                                     Color::hex(0x0ea5e9),
                                     {Color::hex(0x1a2744), Color::hex(0x0f1829)},
                                     "globe",
                                     "html"};
    static const TypeAppearance jsx{"JSX",
                                    Color::hex(0xf59e0b),
                                    {Color::hex(0x1a1a2e), Color::hex(0x16213e)},
                                    "bolt.circle",
                                    "jsx"};
    static const TypeAppearance tsx{"TSX",
                                    appOrangePrimary(),
                                    {Color::hex(0x2d1b1b), Color::hex(0x1a0f0f)},
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
