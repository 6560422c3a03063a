#pragma once

#include "app/detail_views.h"
#include "store/artifact_store.h"
#include "store/notification_center.h"
#include "store/open_panel.h"

#include <functional>
#include <gtkmm/application.h>
#include <gtkmm/shortcutswindow.h>
#include <memory>
#include <string>

namespace kelmo {

class AboutWindow;
class MainWindow;
class SettingsWindow;

// The application: owns the one store for the life of the process, the main window,
// the settings window and the single About window, and the menu commands.
//
// "Open File…" and "Open Folder…" only post their notifications; the store answers
// them. Shortcuts are the application's, so they work from every Kelmo window.
//
// Files given on the command line or by a file manager ("Open With Kelmo") are added
// to the library and shown; a second launch hands its files to the running instance.
class DuskwellApp : public Gtk::Application {
public:
    struct Configuration {
        std::string applicationId = KELMO_APP_ID;
        Gio::Application::Flags flags = Gio::Application::Flags::DEFAULT_FLAGS;
        // Where menu commands post; the store must observe the same centre.
        NotificationCenter* notifications = &NotificationCenter::defaultCenter();
        // Makes the store when the application starts; a plain ArtifactStore by default.
        std::function<std::unique_ptr<ArtifactStore>()> makeStore;
        // The chooser the store runs; the desktop's native chooser by default.
        std::shared_ptr<OpenPanel> openPanel;
        DetailViews detailViews = DetailViews::standard();
    };

    static Glib::RefPtr<DuskwellApp> create();
    static Glib::RefPtr<DuskwellApp> create(Configuration configuration);
    ~DuskwellApp() override;

    // The main window, or null before the first activation and after it was closed.
    MainWindow* mainWindow() const { return mainWindow_.get(); }

protected:
    explicit DuskwellApp(Configuration configuration);
    void on_startup() override;
    void on_activate() override;
    void on_open(const type_vec_files& files, const Glib::ustring& hint) override;
    void on_shutdown() override;

private:
    void installActions();
    Glib::RefPtr<Gio::Menu> makeMenuBar() const;
    void showAbout();
    void showSettings();
    void showShortcuts();
    void quitAll();
    Gtk::Window* activeWindowOrMain() const;

    Configuration configuration_;
    std::unique_ptr<ArtifactStore> store_;
    std::unique_ptr<MainWindow> mainWindow_;
    std::unique_ptr<AboutWindow> aboutWindow_;
    std::unique_ptr<SettingsWindow> settingsWindow_;
    std::unique_ptr<Gtk::ShortcutsWindow> shortcutsWindow_;
};

} // namespace kelmo
