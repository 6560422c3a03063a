#include "library/palette.h"

namespace kelmo {

#define KELMO_PALETTE_COLOR(name, rgb)                                                             \
    const Color& name() {                                                                          \
        static const Color color = Color::hex(rgb);                                                \
        return color;                                                                              \
    }

KELMO_PALETTE_COLOR(appOrangePrimary, 0xe8572e)
KELMO_PALETTE_COLOR(appOrangeLight, 0xf07a50)
KELMO_PALETTE_COLOR(appOrangeDeep, 0xc44020)
KELMO_PALETTE_COLOR(appBg0, 0xfdf8f2)
KELMO_PALETTE_COLOR(appBg1, 0xffffff)
KELMO_PALETTE_COLOR(appBg2, 0xf5ede3)
KELMO_PALETTE_COLOR(appBorder, 0xe8ddd2)
KELMO_PALETTE_COLOR(appText, 0x1c1917)
KELMO_PALETTE_COLOR(appTextDim, 0x78716c)
KELMO_PALETTE_COLOR(appTextMuted, 0xa8a29e)

#undef KELMO_PALETTE_COLOR

} // namespace kelmo
