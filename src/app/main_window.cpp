#include "app/main_window.h"

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
    set_child(content_);

    toggleSidebar_ = Gio::SimpleAction::create_bool("toggle-sidebar", !store_.isFocusMode());
    toggleSidebar_->signal_activate().connect(
        [this](const Glib::VariantBase&) { store_.setIsFocusMode(!store_.isFocusMode()); });
    toggleSidebar_->signal_change_state().connect([this](const Glib::VariantBase& value) {
        const auto shown = Glib::VariantBase::cast_dynamic<Glib::Variant<bool>>(value).get();
        store_.setIsFocusMode(!shown);
    });
    add_action(toggleSidebar_);

    storeChanged_ = store_.signalChanged().connect([this] { updateActions(); });
    updateActions();
}

MainWindow::~MainWindow() {
    storeChanged_.disconnect();
}

void MainWindow::updateActions() {
    const bool sidebarShown = !store_.isFocusMode();
    bool current = false;
    toggleSidebar_->get_state(current);
    if (current != sidebarShown)
        toggleSidebar_->set_state(Glib::Variant<bool>::create(sidebarShown));
}

} // namespace kelmo
