#include "library/palette.h"

namespace kelmo {

#define KELMO_PALETTE_COLOR(name, hex)                                                             \
    const Color& name() {                                                                          \
        static const Color color{hex};                                                             \
        return color;                                                                              \
    }

KELMO_PALETTE_COLOR(appOrangePrimary, "#e8572e")
KELMO_PALETTE_COLOR(appOrangeLight, "#f07a50")
KELMO_PALETTE_COLOR(appOrangeDeep, "#c44020")
KELMO_PALETTE_COLOR(appBg0, "#fdf8f2")
KELMO_PALETTE_COLOR(appBg1, "#ffffff")
KELMO_PALETTE_COLOR(appBg2, "#f5ede3")
KELMO_PALETTE_COLOR(appBorder, "#e8ddd2")
KELMO_PALETTE_COLOR(appText, "#1c1917")
KELMO_PALETTE_COLOR(appTextDim, "#78716c")
KELMO_PALETTE_COLOR(appTextMuted, "#a8a29e")

#undef KELMO_PALETTE_COLOR

} // namespace kelmo
