#pragma once

#include "app/detail_views.h"
#include "app/onboarding_view.h"
#include "app/sidebar_view.h"
#include "store/artifact_store.h"

#include <giomm/menumodel.h>
#include <gtkmm/box.h>
#include <gtkmm/paned.h>
#include <gtkmm/stack.h>
#include <memory>
#include <optional>
#include <sigc++/connection.h>
#include <vector>

namespace kelmo {

// The main window's content: a split of the sidebar and the detail column. The
// detail shows the player while the store has a selected artifact and the library
// otherwise. Focus mode hides the sidebar: the divider then rests at the window's
// edge, and dragging it out again ends focus mode, as dragging it in far enough
// starts it. The first-run guide is presented over the window whenever the store
// asks for it.
//
// The top of the detail column carries the window's controls and, when given, the
// menu bar; the content reaches the top edge of the window.
class ContentView : public Gtk::Paned {
public:
    // Below this width, a dragged sidebar collapses into focus mode.
    static constexpr int collapseWidth = SidebarView::minimumWidth / 2;

    ContentView(ArtifactStore& store, DetailViews detailViews,
                Glib::RefPtr<Gio::MenuModel> menuBar = {},
                FolderOpener openFolder = openInFileManager);
    ~ContentView() override;
    ContentView(const ContentView&) = delete;
    ContentView& operator=(const ContentView&) = delete;

    // The view the detail column shows now: the library or the player.
    Gtk::Widget* detailView() const;

    // The first-run guide while it is presented.
    OnboardingView* onboardingView() const { return onboarding_.get(); }

    // Puts the focus in the sidebar's search field, bringing the sidebar back first
    // in focus mode. Escape there hands the focus to the detail column.
    void focusSearch();

private:
    Gtk::Widget& makeTopBar(const Glib::RefPtr<Gio::MenuModel>& menuBar);
    void update();
    void updateDetail();
    void updateSidebarVisibility();
    void updateOnboarding();
    void sidebarWidthChanged();
    void focusDetail();
    void retire(Gtk::Widget* view);

    ArtifactStore& store_;
    DetailViews detailViews_;
    SidebarView sidebar_;
    Gtk::Box detail_{Gtk::Orientation::VERTICAL, 0};
    Gtk::Stack stack_;
    Gtk::Widget* libraryView_ = nullptr;
    Gtk::Widget* playerView_ = nullptr;
    std::optional<Uuid> playerArtifactId_;
    int expandedWidth_ = SidebarView::idealWidth;
    bool settingWidth_ = false;
    std::unique_ptr<OnboardingView> onboarding_;
    std::vector<sigc::connection> connections_;
};

} // namespace kelmo
