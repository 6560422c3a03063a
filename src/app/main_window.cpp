#include "app/main_window.h"

#include "runtime/export_dialog.h"

#include <gtkmm/button.h>

namespace kelmo {

MainWindow::MainWindow(ArtifactStore& store, DetailViews detailViews,
                       Glib::RefPtr<Gio::MenuModel> menuBar)
    : store_{store}, content_{store, std::move(detailViews), std::move(menuBar)} {
    add_css_class("main-window");
    set_title("Kelmo");
    set_default_size(defaultWidth, defaultHeight);
    set_hide_on_close(true);
    // The menu bar lives in the content's top area, not above it.
    set_show_menubar(false);
    // No title bar of our own: the content's top area carries the window controls.
    auto* titlebar = Gtk::make_managed<Gtk::Box>();
    titlebar->set_visible(false);
    set_titlebar(*titlebar);
    layers_.set_child(content_);
    set_child(layers_);

    notice_.add_css_class("settings-notice");
    notice_.set_halign(Gtk::Align::CENTER);
    notice_.set_valign(Gtk::Align::END);
    notice_.set_visible(false);
    noticeText_.set_wrap(true);
    noticeText_.set_max_width_chars(70);
    notice_.append(noticeText_);
    auto* dismiss = Gtk::make_managed<Gtk::Button>("Dismiss");
    dismiss->set_valign(Gtk::Align::CENTER);
    dismiss->signal_clicked().connect([this] { notice_.set_visible(false); });
    notice_.append(*dismiss);
    layers_.add_overlay(notice_);
    if (const auto& error = store_.settings().writeError())
        showSettingsNotice(*error);
    writeFailed_ = store_.settings().signalWriteFailed().connect(
        [this](const std::string& why) { showSettingsNotice(why); });

    toggleSidebar_ = Gio::SimpleAction::create_bool("toggle-sidebar", !store_.isFocusMode());
    toggleSidebar_->signal_activate().connect(
        [this](const Glib::VariantBase&) { store_.setIsFocusMode(!store_.isFocusMode()); });
    toggleSidebar_->signal_change_state().connect([this](const Glib::VariantBase& value) {
        const auto shown = Glib::VariantBase::cast_dynamic<Glib::Variant<bool>>(value).get();
        store_.setIsFocusMode(!shown);
    });
    add_action(toggleSidebar_);
    add_action("search", [this] { content_.focusSearch(); });
    // Export as HTML… of the library's context menus, for the artifact at the path.
    add_action_with_parameter(
        "export-html", Glib::VARIANT_TYPE_BYTESTRING, [this](const Glib::VariantBase& parameter) {
            const auto path =
                Glib::VariantBase::cast_dynamic<Glib::Variant<std::string>>(parameter).get();
            exportAsHtml(*this, path, saveDialogOver(*this), [](const std::string&) {});
        });

    storeChanged_ = store_.signalChanged().connect([this] { updateActions(); });
    updateActions();
}

MainWindow::~MainWindow() {
    storeChanged_.disconnect();
    writeFailed_.disconnect();
}

void MainWindow::showSettingsNotice(const std::string& why) {
    noticeText_.set_text("Kelmo cannot save its settings (" + why +
                         "). Favorites, recent files and watched folders will not be kept "
                         "after Kelmo quits.");
    notice_.set_visible(true);
}

void MainWindow::updateActions() {
    const bool sidebarShown = !store_.isFocusMode();
    bool current = false;
    toggleSidebar_->get_state(current);
    if (current != sidebarShown)
        toggleSidebar_->set_state(Glib::Variant<bool>::create(sidebarShown));
}

} // namespace kelmo
