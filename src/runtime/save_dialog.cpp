#include "runtime/save_dialog.h"

#include <giomm/file.h>
#include <glibmm/main.h>
#include <gtkmm/filechoosernative.h>
#include <gtkmm/window.h>

namespace kelmo {

void askWhereToSave(Gtk::Widget& over, const std::string& title,
                    const std::optional<std::filesystem::path>& folder,
                    const std::string& suggestedName,
                    std::function<void(std::optional<std::filesystem::path>)> chosen) {
    auto dialog =
        Gtk::FileChooserNative::create(title, Gtk::FileChooser::Action::SAVE, "_Save", "_Cancel");
    if (auto* root = dynamic_cast<Gtk::Window*>(over.get_root()))
        dialog->set_transient_for(*root);
    dialog->set_modal(true);
    if (folder)
        dialog->set_current_folder(Gio::File::create_for_path(folder->string()));
    dialog->set_current_name(suggestedName);
    // The handler keeps the dialog alive until it has answered, and is let go of after.
    auto handler = std::make_shared<sigc::connection>();
    *handler = dialog->signal_response().connect(
        [dialog, handler, chosen = std::move(chosen)](int response) mutable {
            std::optional<std::filesystem::path> file;
            if (response == GTK_RESPONSE_ACCEPT)
                if (const auto picked = dialog->get_file(); picked && !picked->get_path().empty())
                    file = picked->get_path();
            Glib::signal_idle().connect_once([handler] { handler->disconnect(); });
            chosen(std::move(file));
        });
    dialog->show();
}

} // namespace kelmo
