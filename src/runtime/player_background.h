#pragma once

#include <cairomm/context.h>
#include <gtkmm/drawingarea.h>

namespace kelmo {

// The warm checkerboard behind the player's stage (see checkerboard.h).
class PlayerBackground : public Gtk::DrawingArea {
public:
    PlayerBackground();

private:
    void draw(const Cairo::RefPtr<Cairo::Context>& context, int width, int height);
};

} // namespace kelmo
