#include "library/file_manager.h"

#include "model/artifact.h"
#include "model/watched_folder.h"

#include <filesystem>
#include <giomm/appinfo.h>
#include <giomm/dbusconnection.h>
#include <giomm/file.h>
#include <glibmm/main.h>
#include <gtkmm/application.h>
#include <gtkmm/messagedialog.h>
#include <memory>

namespace kelmo {
namespace {

void explainUnopenedFolder(const std::string& folderPath, const Glib::ustring& why) {
    const std::string name = std::filesystem::path{folderPath}.filename();
    const Glib::ustring title = "Kelmo cannot open “" + displayName(name) + "”";
    const auto app = std::dynamic_pointer_cast<Gtk::Application>(Gio::Application::get_default());
    Gtk::Window* parent = app ? app->get_active_window() : nullptr;
    auto owned =
        parent ? std::make_unique<Gtk::MessageDialog>(
                     *parent, title, false, Gtk::MessageType::WARNING, Gtk::ButtonsType::OK, true)
               : std::make_unique<Gtk::MessageDialog>(title, false, Gtk::MessageType::WARNING,
                                                      Gtk::ButtonsType::OK, true);
    owned->set_secondary_text("No file manager answered, and no application opens folders (" + why +
                              ").\n\nThe folder is " + displayName(folderPath) + ".");
    // Answered, the dialog goes once its own handler has returned.
    Gtk::MessageDialog* dialog = owned.release();
    dialog->signal_response().connect([dialog](int) {
        dialog->set_visible(false);
        Glib::signal_idle().connect_once(
            [dialog] { std::unique_ptr<Gtk::MessageDialog> answered{dialog}; });
    });
    dialog->present();
}

void openWithDefaultHandler(const std::string& folderPath) {
    Gio::AppInfo::launch_default_for_uri_async(
        Gio::File::create_for_path(folderPath)->get_uri(),
        [folderPath](const Glib::RefPtr<Gio::AsyncResult>& result) {
            try {
                Gio::AppInfo::launch_default_for_uri_finish(result);
            } catch (const Glib::Error& error) {
                explainUnopenedFolder(folderPath, error.what());
            }
        });
}

// Calls a FileManager1 method with one file's location, opening the folder with the
// default handler when no file manager answers.
void askFileManager(const char* method, const std::string& path, const std::string& folderPath) {
    Glib::RefPtr<Gio::DBus::Connection> bus;
    try {
        bus = Gio::DBus::Connection::get_sync(Gio::DBus::BusType::SESSION);
    } catch (const Glib::Error&) {
        openWithDefaultHandler(folderPath);
        return;
    }
    const std::vector<Glib::ustring> uris{Gio::File::create_for_path(path)->get_uri()};
    const auto parameters = Glib::VariantContainerBase::create_tuple(
        {Glib::Variant<std::vector<Glib::ustring>>::create(uris),
         Glib::Variant<Glib::ustring>::create("")});
    bus->call(
        "/org/freedesktop/FileManager1", "org.freedesktop.FileManager1", method, parameters,
        [bus, folderPath](const Glib::RefPtr<Gio::AsyncResult>& result) {
            try {
                bus->call_finish(result);
            } catch (const Glib::Error&) {
                openWithDefaultHandler(folderPath);
            }
        },
        "org.freedesktop.FileManager1", 5000);
}

} // namespace

void revealInFileManager(const std::string& filePath) {
    askFileManager("ShowItems", filePath, containingDirectoryPath(filePath));
}

void openInFileManager(const std::string& folderPath) {
    askFileManager("ShowFolders", folderPath, folderPath);
}

} // namespace kelmo
