#include "app/content_view.h"

#include <glibmm/main.h>
#include <gtkmm/centerbox.h>
#include <gtkmm/popovermenubar.h>
#include <gtkmm/windowcontrols.h>
#include <gtkmm/windowhandle.h>
#include <sigc++/adaptors/track_obj.h>

namespace kelmo {

ContentView::ContentView(ArtifactStore& store, DetailViews detailViews,
                         Glib::RefPtr<Gio::MenuModel> menuBar, FolderOpener openFolder)
    : Gtk::Paned{Gtk::Orientation::HORIZONTAL}, store_{store},
      detailViews_{std::move(detailViews)}, sidebar_{store, std::move(openFolder)} {
    add_css_class("content-view");
    set_start_child(sidebar_);
    // The sidebar may be dragged below its minimum width (which collapses it), and
    // keeps its width when the window is resized.
    set_shrink_start_child(true);
    set_resize_start_child(false);

    detail_.add_css_class("detail-column");
    detail_.append(makeTopBar(menuBar));
    stack_.set_vexpand(true);
    stack_.set_hexpand(true);
    stack_.set_transition_type(Gtk::StackTransitionType::CROSSFADE);
    stack_.set_transition_duration(120);
    detail_.append(stack_);
    set_end_child(detail_);
    set_shrink_end_child(false);
    set_resize_end_child(true);

    set_position(expandedWidth_);
    connections_.push_back(
        property_position().signal_changed().connect([this] { sidebarWidthChanged(); }));
    connections_.push_back(store_.signalChanged().connect([this] { update(); }));
    connections_.push_back(sidebar_.signalSearchLeft().connect([this] { focusDetail(); }));
    // The guide is presented over the window once the window is on screen.
    connections_.push_back(signal_map().connect([this] {
        Glib::signal_idle().connect_once(sigc::track_object([this] { updateOnboarding(); }, *this));
    }));
    update();
}

ContentView::~ContentView() {
    for (auto& connection : connections_)
        connection.disconnect();
}

Gtk::Widget* ContentView::detailView() const {
    return playerView_ ? playerView_ : libraryView_;
}

Gtk::Widget& ContentView::makeTopBar(const Glib::RefPtr<Gio::MenuModel>& menuBar) {
    // Stands in for the hidden title bar: dragging it moves the window.
    auto* handle = Gtk::make_managed<Gtk::WindowHandle>();
    auto* bar = Gtk::make_managed<Gtk::CenterBox>();
    bar->add_css_class("detail-top-bar");
    auto* start = Gtk::make_managed<Gtk::Box>(Gtk::Orientation::HORIZONTAL, 6);
    start->append(*Gtk::make_managed<Gtk::WindowControls>(Gtk::PackType::START));
    if (menuBar) {
        auto* menus = Gtk::make_managed<Gtk::PopoverMenuBar>(menuBar);
        menus->add_css_class("app-menu-bar");
        start->append(*menus);
    }
    bar->set_start_widget(*start);
    bar->set_end_widget(*Gtk::make_managed<Gtk::WindowControls>(Gtk::PackType::END));
    handle->set_child(*bar);
    return *handle;
}

void ContentView::update() {
    updateSidebarVisibility();
    updateDetail();
    updateOnboarding();
}

void ContentView::updateDetail() {
    const auto& selected = store_.selectedArtifact();
    if (selected) {
        if (!playerView_) {
            retire(libraryView_);
            libraryView_ = nullptr;
            playerView_ = detailViews_.makePlayerView(store_, *selected);
            stack_.add(*playerView_);
            stack_.set_visible_child(*playerView_);
        } else if (playerArtifactId_ != selected->id && detailViews_.showArtifact) {
            detailViews_.showArtifact(*playerView_, *selected);
        }
        playerArtifactId_ = selected->id;
    } else if (!libraryView_) {
        retire(playerView_);
        playerView_ = nullptr;
        playerArtifactId_.reset();
        libraryView_ = detailViews_.makeLibraryView(store_);
        stack_.add(*libraryView_);
        stack_.set_visible_child(*libraryView_);
    }
}

void ContentView::retire(Gtk::Widget* view) {
    if (!view)
        return;
    // The change may come from inside the view (a click on one of its buttons), so it
    // leaves the column once that handler has returned.
    view->set_sensitive(false);
    Glib::signal_idle().connect_once(sigc::track_object(
        [this, view] {
            if (view->get_parent() == &stack_)
                stack_.remove(*view);
        },
        *this));
}

void ContentView::updateSidebarVisibility() {
    const bool focusMode = store_.isFocusMode();
    // The collapsed sidebar takes neither clicks nor keyboard focus.
    sidebar_.set_can_focus(!focusMode);
    sidebar_.set_can_target(!focusMode);
    if (focusMode)
        add_css_class("focus-mode");
    else
        remove_css_class("focus-mode");

    const int width = get_position();
    int wanted = width;
    if (focusMode && width > 0)
        wanted = 0;
    else if (!focusMode && width < SidebarView::minimumWidth)
        wanted = expandedWidth_;
    if (wanted != width) {
        settingWidth_ = true;
        set_position(wanted);
        settingWidth_ = false;
    }
}

void ContentView::sidebarWidthChanged() {
    if (settingWidth_)
        return;
    const int width = get_position();
    if (width > SidebarView::maximumWidth) {
        set_position(SidebarView::maximumWidth);
        return;
    }
    const bool collapsed = width < collapseWidth;
    if (!collapsed && width >= SidebarView::minimumWidth)
        expandedWidth_ = width;
    if (collapsed != store_.isFocusMode())
        store_.setIsFocusMode(collapsed);
    else if (!collapsed && width < SidebarView::minimumWidth)
        set_position(SidebarView::minimumWidth);
}

void ContentView::focusSearch() {
    if (store_.isFocusMode())
        store_.setIsFocusMode(false);
    sidebar_.focusSearch();
}

void ContentView::focusDetail() {
    if (auto* view = detailView(); view && !view->grab_focus())
        view->child_focus(Gtk::DirectionType::TAB_FORWARD);
}

void ContentView::updateOnboarding() {
    if (store_.isShowingOnboarding()) {
        auto* window = dynamic_cast<Gtk::Window*>(get_root());
        if (onboarding_ || !window || !get_mapped())
            return;
        onboarding_ = std::make_unique<OnboardingView>(store_, window);
        onboarding_->present();
    } else if (onboarding_) {
        // The guide may be closing from one of its own handlers; it goes once they return.
        std::shared_ptr<OnboardingView> closing{onboarding_.release()};
        closing->set_visible(false);
        Glib::signal_idle().connect_once([closing] {});
    }
}

} // namespace kelmo
