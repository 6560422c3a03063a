#include "app/about_view.h"

#include "app/app_logo.h"
#include "app/contact_link.h"

#include <gtkmm/box.h>
#include <gtkmm/label.h>
#include <gtkmm/separator.h>

namespace kelmo {
namespace {

Gtk::Label* makeLabel(const char* text, const char* cssClass) {
    auto* label = Gtk::make_managed<Gtk::Label>(text);
    label->add_css_class(cssClass);
    return label;
}

// A centred paragraph that wraps within the window.
Gtk::Label* makeParagraph(const char* text, const char* cssClass) {
    auto* label = makeLabel(text, cssClass);
    label->set_wrap(true);
    label->set_wrap_mode(Pango::WrapMode::WORD_CHAR);
    label->set_justify(Gtk::Justification::CENTER);
    label->set_max_width_chars(60);
    return label;
}

Gtk::Widget* makeHeader() {
    auto* header = Gtk::make_managed<Gtk::Box>(Gtk::Orientation::VERTICAL, 12);
    header->set_halign(Gtk::Align::CENTER);
    header->set_margin_top(32);
    header->set_margin_bottom(24);
    auto* logo = makeAppLogo(72);
    logo->add_css_class("about-logo");
    header->append(*logo);

    auto* titles = Gtk::make_managed<Gtk::Box>(Gtk::Orientation::VERTICAL, 4);
    titles->append(*makeLabel("Kelmo", "about-name"));
    titles->append(*makeLabel("Version " KELMO_VERSION "  ·  Linux", "about-version"));
    header->append(*titles);

    auto* tagline = makeParagraph("Run any AI-generated prototype on your computer, instantly.",
                                  "about-tagline");
    tagline->set_margin_start(32);
    tagline->set_margin_end(32);
    header->append(*tagline);
    return header;
}

Gtk::Widget* makeMakerCard() {
    auto* card = Gtk::make_managed<Gtk::Box>(Gtk::Orientation::VERTICAL, 0);
    card->add_css_class("about-card");
    card->set_margin_start(24);
    card->set_margin_end(24);

    auto* maker = Gtk::make_managed<Gtk::Box>(Gtk::Orientation::HORIZONTAL, 14);
    maker->add_css_class("about-maker");
    auto* initials = makeLabel(KELMO_MAKER_INITIALS, "about-initials");
    initials->set_size_request(44, 44);
    initials->set_valign(Gtk::Align::CENTER);
    maker->append(*initials);
    auto* names = Gtk::make_managed<Gtk::Box>(Gtk::Orientation::VERTICAL, 3);
    names->set_valign(Gtk::Align::CENTER);
    names->set_hexpand(true);
    auto* name = makeLabel(KELMO_MAKER_NAME, "about-maker-name");
    auto* role = makeLabel(KELMO_MAKER_ROLE, "about-maker-role");
    for (auto* label : {name, role}) {
        label->set_halign(Gtk::Align::START);
        label->set_xalign(0);
        label->set_ellipsize(Pango::EllipsizeMode::END);
        names->append(*label);
    }
    maker->append(*names);
    card->append(*maker);

    auto* divider = Gtk::make_managed<Gtk::Separator>(Gtk::Orientation::HORIZONTAL);
    divider->add_css_class("about-divider");
    card->append(*divider);

    auto* links = Gtk::make_managed<Gtk::Box>(Gtk::Orientation::HORIZONTAL, 10);
    links->add_css_class("about-links");
    links->append(*Gtk::make_managed<ContactLink>("envelope", KELMO_MAKER_EMAIL,
                                                  mailtoURL(KELMO_MAKER_EMAIL)));
    links->append(*Gtk::make_managed<ContactLink>("globe", KELMO_MAKER_DOMAIN,
                                                  websiteURL(KELMO_MAKER_DOMAIN)));
    card->append(*links);
    return card;
}

} // namespace

AboutView::AboutView() {
    add_css_class("about-view");
    set_policy(Gtk::PolicyType::NEVER, Gtk::PolicyType::AUTOMATIC);
    set_size_request(width, -1);
    set_vexpand(true);

    auto* content = Gtk::make_managed<Gtk::Box>(Gtk::Orientation::VERTICAL, 0);
    content->append(*makeHeader());
    content->append(*makeMakerCard());

    auto* statement = makeParagraph(
        "Kelmo is an independent tool and is not affiliated with, or endorsed by, any AI "
        "provider. It runs standard web files (.html, .jsx, .tsx) that you choose to open.",
        "about-statement");
    statement->set_margin_top(20);
    statement->set_margin_start(24);
    statement->set_margin_end(24);
    content->append(*statement);

    auto* footer = makeLabel(KELMO_ABOUT_FOOTER, "about-footer");
    footer->set_margin_top(10);
    footer->set_margin_bottom(24);
    footer->set_margin_start(24);
    footer->set_margin_end(24);
    footer->set_ellipsize(Pango::EllipsizeMode::END);
    content->append(*footer);
    set_child(*content);
}

} // namespace kelmo
