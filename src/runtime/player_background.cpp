#include "runtime/player_background.h"

#include "library/color.h"
#include "runtime/checkerboard.h"

namespace kelmo {

PlayerBackground::PlayerBackground() {
    add_css_class("player-background");
    set_hexpand(true);
    set_vexpand(true);
    set_draw_func(sigc::mem_fun(*this, &PlayerBackground::draw));
}

void PlayerBackground::draw(const Cairo::RefPtr<Cairo::Context>& context, int width, int height) {
    const CheckerboardCells cells = checkerboardCells(width, height);
    for (int row = 0; row < cells.rows; ++row) {
        for (int column = 0; column < cells.columns; ++column) {
            const Color color = Color::hex(checkerboardColor(row, column));
            context->set_source_rgb(color.red, color.green, color.blue);
            context->rectangle(column * checkerCellSize, row * checkerCellSize, checkerCellSize,
                               checkerCellSize);
            context->fill();
        }
    }
}

} // namespace kelmo
