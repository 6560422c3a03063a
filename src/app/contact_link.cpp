#include "app/contact_link.h"

#include "library/symbols.h"

#include <gtk/gtk.h>
#include <gtkmm/box.h>
#include <gtkmm/image.h>
#include <gtkmm/label.h>

namespace kelmo {

void openWithDefaultHandler(const std::string& uri) {
    gtk_show_uri(nullptr, uri.c_str(), GDK_CURRENT_TIME);
}

std::string mailtoURL(std::string_view address) {
    return "mailto:" + std::string{address};
}

std::string websiteURL(std::string_view domain) {
    return "https://" + std::string{domain};
}

std::optional<std::string> linkTarget(std::string_view url) {
    std::string text{url};
    if (!g_uri_is_valid(text.c_str(), G_URI_FLAGS_NONE, nullptr))
        return std::nullopt;
    return text;
}

ContactLink::ContactLink(const std::string& icon, const std::string& label, std::string url,
                         UriOpener open)
    : url_{std::move(url)}, open_{std::move(open)} {
    add_css_class("contact-link");
    set_tooltip_text(url_);
    auto* content = Gtk::make_managed<Gtk::Box>(Gtk::Orientation::HORIZONTAL, 5);
    content->set_valign(Gtk::Align::CENTER);
    auto* image = Gtk::make_managed<Gtk::Image>();
    image->set_from_icon_name(symbolIconName(icon));
    image->add_css_class("contact-link-icon");
    content->append(*image);
    auto* text = Gtk::make_managed<Gtk::Label>(label);
    text->add_css_class("contact-link-label");
    content->append(*text);
    set_child(*content);
    signal_clicked().connect([this] {
        if (const auto target = linkTarget(url_); target && open_)
            open_(*target);
    });
}

} // namespace kelmo
