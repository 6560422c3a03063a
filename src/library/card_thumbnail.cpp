#include "library/card_thumbnail.h"

#include "library/type_appearance.h"

#include <cmath>
#include <numbers>

namespace kelmo {

CardThumbnail::CardThumbnail() : colors_{typeAppearance(ArtifactType::Kind::html).thumbnailColors} {
    add_css_class("card-thumbnail");
    set_content_height(height);
    set_hexpand(true);
    set_draw_func(sigc::mem_fun(*this, &CardThumbnail::draw));
}

void CardThumbnail::setType(ArtifactType::Kind kind) {
    const auto& colors = typeAppearance(kind).thumbnailColors;
    if (colors == colors_)
        return;
    colors_ = colors;
    queue_draw();
}

void CardThumbnail::setPicture(Cairo::RefPtr<Cairo::ImageSurface> picture) {
    if (picture == picture_)
        return;
    picture_ = std::move(picture);
    queue_draw();
}

void CardThumbnail::draw(const Cairo::RefPtr<Cairo::Context>& cr, int width, int height) const {
    if (picture_) {
        // As wide as the card, from the top: a page's first screen starts there.
        const double scale = static_cast<double>(width) / picture_->get_width();
        cr->save();
        cr->scale(scale, scale);
        auto pattern = Cairo::SurfacePattern::create(picture_);
        pattern->set_filter(Cairo::SurfacePattern::Filter::GOOD);
        cr->set_source(pattern);
        cr->rectangle(0, 0, width / scale, height / scale);
        cr->fill();
        cr->restore();
        return;
    }
    auto gradient = Cairo::LinearGradient::create(0, 0, width, height);
    for (std::size_t stop = 0; stop < colors_.size(); ++stop) {
        const Color& color = colors_[stop];
        gradient->add_color_stop_rgb(static_cast<double>(stop), color.red, color.green, color.blue);
    }
    cr->set_source(gradient);
    cr->paint();

    // The width alone sets the spokes' reach, whatever the height.
    const double centerX = width / 2.0;
    const double centerY = height / 2.0;
    const double radius = 0.45 * width;
    cr->set_source_rgba(1, 1, 1, 0.08);
    cr->set_line_width(1.5);
    // Each spoke is stroked on its own, so they add up where they meet.
    for (int spoke = 0; spoke < 6; ++spoke) {
        const double angle = spoke * std::numbers::pi / 3.0;
        cr->move_to(centerX, centerY);
        cr->line_to(centerX + radius * std::cos(angle), centerY + radius * std::sin(angle));
        cr->stroke();
    }

    cr->set_source_rgba(1, 1, 1, 0.15);
    cr->arc(centerX, centerY, 4, 0, 2 * std::numbers::pi);
    cr->fill();
}

} // namespace kelmo
