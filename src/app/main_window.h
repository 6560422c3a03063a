#pragma once

#include "app/content_view.h"
#include "store/artifact_store.h"

#include <giomm/simpleaction.h>
#include <gtkmm/applicationwindow.h>
#include <sigc++/connection.h>

namespace kelmo {

// The main window: ContentView under a hidden title bar (the content reaches the top
// edge), with the window's own action win.toggle-sidebar, a check item whose state
// is whether the sidebar shows (the opposite of the store's focus mode).
class MainWindow : public Gtk::ApplicationWindow {
public:
    static constexpr int defaultWidth = 1100;
    static constexpr int defaultHeight = 700;

    MainWindow(ArtifactStore& store, DetailViews detailViews,
               Glib::RefPtr<Gio::MenuModel> menuBar = {});
    ~MainWindow() override;
    MainWindow(const MainWindow&) = delete;
    MainWindow& operator=(const MainWindow&) = delete;

    ContentView& contentView() { return content_; }

private:
    void updateActions();

    ArtifactStore& store_;
    ContentView content_;
    Glib::RefPtr<Gio::SimpleAction> toggleSidebar_;
    sigc::connection storeChanged_;
};

} // namespace kelmo
