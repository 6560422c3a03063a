#pragma once

#include "app/content_view.h"
#include "store/artifact_store.h"

#include <giomm/simpleaction.h>
#include <gtkmm/applicationwindow.h>
#include <gtkmm/box.h>
#include <gtkmm/label.h>
#include <gtkmm/overlay.h>
#include <sigc++/connection.h>

namespace kelmo {

// The main window: ContentView under a hidden title bar (the content reaches the top
// edge), with the window's own actions: win.toggle-sidebar, a check item whose state
// is whether the sidebar shows (the opposite of the store's focus mode), and
// win.search, which puts the focus in the sidebar's search field. When the settings
// cannot be saved, a notice over the content says so until dismissed.
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
    // The notice that settings cannot be saved; hidden while they can.
    Gtk::Widget& settingsNotice() { return notice_; }

private:
    void updateActions();
    void showSettingsNotice(const std::string& why);

    ArtifactStore& store_;
    Gtk::Overlay layers_;
    ContentView content_;
    Gtk::Box notice_{Gtk::Orientation::HORIZONTAL, 10};
    Gtk::Label noticeText_;
    sigc::connection writeFailed_;
    Glib::RefPtr<Gio::SimpleAction> toggleSidebar_;
    sigc::connection storeChanged_;
};

} // namespace kelmo
