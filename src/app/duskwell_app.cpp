#include "app/duskwell_app.h"

#include "app/about_window.h"
#include "app/command_line.h"
#include "app/file_chooser_open_panel.h"
#include "app/light_theme.h"
#include "app/main_window.h"
#include "app/renderer_choice.h"
#include "app/settings_window.h"
#include "app/shortcuts_window.h"
#include "library/app_style.h"
#include "library/symbols.h"

#include <cstdio>
#include <gdkmm/display.h>
#include <giomm/menu.h>
#include <vector>

namespace kelmo {
namespace {

// Every keyboard shortcut of the application, by action. window.close is the toolkit's
// own action of every window, so Ctrl+W closes the one it is typed in.
struct Accelerator {
    const char* action;
    std::vector<Glib::ustring> accels;
};

const std::vector<Accelerator>& accelerators() {
    static const std::vector<Accelerator> table{
        {"app.open-file", {"<Control>o"}},    {"app.open-folder", {"<Shift><Control>o"}},
        {"app.settings", {"<Control>comma"}}, {"app.shortcuts", {"<Control>question"}},
        {"app.quit", {"<Control>q"}},         {"window.close", {"<Control>w"}},
        {"win.search", {"<Control>f"}},       {"win.toggle-sidebar", {"F9"}},
    };
    return table;
}

} // namespace

Glib::RefPtr<DuskwellApp> DuskwellApp::create() {
    return create(Configuration{});
}

Glib::RefPtr<DuskwellApp> DuskwellApp::create(Configuration configuration) {
    return Glib::make_refptr_for_instance<DuskwellApp>(new DuskwellApp(std::move(configuration)));
}

DuskwellApp::DuskwellApp(Configuration configuration)
    : Gtk::Application{configuration.applicationId,
                       configuration.flags | Gio::Application::Flags::HANDLES_OPEN},
      configuration_{std::move(configuration)} {
    addCommandLineOptions(*this, [] { return -1; });
}

DuskwellApp::~DuskwellApp() {
    // Windows go before the store they show.
    shortcutsWindow_.reset();
    settingsWindow_.reset();
    aboutWindow_.reset();
    mainWindow_.reset();
    store_.reset();
}

void DuskwellApp::on_startup() {
    Gtk::Application::on_startup();
    const auto display = Gdk::Display::get_default();
    preferCairoOnSoftwareRendering(display);
    keepLightTheme(Gtk::Settings::get_default());
    installSymbolIcons(display);
    loadApplicationStyle(display);
    Gtk::Window::set_default_icon_name(appLogoIconName);

    installActions();
    set_menubar(makeMenuBar());

    store_ =
        configuration_.makeStore ? configuration_.makeStore() : std::make_unique<ArtifactStore>();
    std::shared_ptr<OpenPanel> panel = configuration_.openPanel;
    if (!panel)
        panel = std::make_shared<FileChooserOpenPanel>([this] { return activeWindowOrMain(); });
    store_->setOpenPanel(std::move(panel));
}

void DuskwellApp::on_activate() {
    if (!mainWindow_) {
        mainWindow_ =
            std::make_unique<MainWindow>(*store_, configuration_.detailViews, get_menubar());
    }
    // A closed window leaves the application; showing it again brings it back.
    add_window(*mainWindow_);
    mainWindow_->present();
}

void DuskwellApp::on_open(const type_vec_files& files, const Glib::ustring&) {
    on_activate();
    for (const auto& file : files) {
        const std::string path = file->get_path();
        if (!path.empty())
            store_->addArtifact(path);
    }
}

void DuskwellApp::on_shutdown() {
    shortcutsWindow_.reset();
    settingsWindow_.reset();
    aboutWindow_.reset();
    mainWindow_.reset();
    Gtk::Application::on_shutdown();
}

void DuskwellApp::installActions() {
    NotificationCenter* notifications = configuration_.notifications;
    add_action("open-file",
               [notifications] { notifications->post(notification_names::openArtifactFile); });
    add_action("open-folder",
               [notifications] { notifications->post(notification_names::openFolder); });
    add_action("about", [this] { showAbout(); });
    add_action("settings", [this] { showSettings(); });
    add_action("shortcuts", [this] { showShortcuts(); });
    add_action("quit", [this] { quitAll(); });
    for (const auto& accelerator : accelerators())
        set_accels_for_action(accelerator.action, accelerator.accels);
}

Glib::RefPtr<Gio::Menu> DuskwellApp::makeMenuBar() const {
    auto menuBar = Gio::Menu::create();

    auto appMenu = Gio::Menu::create();
    auto appInfo = Gio::Menu::create();
    appInfo->append("About Kelmo", "app.about");
    appMenu->append_section(appInfo);
    auto preferences = Gio::Menu::create();
    preferences->append("Settings…", "app.settings");
    preferences->append("Keyboard Shortcuts", "app.shortcuts");
    appMenu->append_section(preferences);
    menuBar->append_submenu("Kelmo", appMenu);

    // The new-item group holds only the two open commands: no new-window item.
    auto fileMenu = Gio::Menu::create();
    auto open = Gio::Menu::create();
    open->append("Open File…", "app.open-file");
    open->append("Open Folder…", "app.open-folder");
    fileMenu->append_section(open);
    auto quit = Gio::Menu::create();
    quit->append("Close Window", "window.close");
    quit->append("Quit", "app.quit");
    fileMenu->append_section(quit);
    menuBar->append_submenu("File", fileMenu);

    auto viewMenu = Gio::Menu::create();
    viewMenu->append("Show Sidebar", "win.toggle-sidebar");
    viewMenu->append("Search", "win.search");
    menuBar->append_submenu("View", viewMenu);
    return menuBar;
}

void DuskwellApp::showAbout() {
    if (!aboutWindow_) {
        aboutWindow_ = std::make_unique<AboutWindow>();
    }
    add_window(*aboutWindow_);
    aboutWindow_->present();
}

void DuskwellApp::showSettings() {
    if (!store_)
        return;
    if (!settingsWindow_) {
        settingsWindow_ = std::make_unique<SettingsWindow>(*store_);
    }
    add_window(*settingsWindow_);
    settingsWindow_->present();
}

void DuskwellApp::showShortcuts() {
    if (!shortcutsWindow_)
        shortcutsWindow_ = makeShortcutsWindow();
    if (auto* parent = activeWindowOrMain(); parent && parent != shortcutsWindow_.get())
        shortcutsWindow_->set_transient_for(*parent);
    add_window(*shortcutsWindow_);
    shortcutsWindow_->present();
}

void DuskwellApp::quitAll() {
    for (auto* window : get_windows())
        window->set_visible(false);
    quit();
}

Gtk::Window* DuskwellApp::activeWindowOrMain() const {
    if (auto* active = const_cast<DuskwellApp*>(this)->get_active_window())
        return active;
    return mainWindow_.get();
}

} // namespace kelmo
