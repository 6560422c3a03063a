#include "app/file_chooser_open_panel.h"

namespace kelmo {

FileChooserOpenPanel::FileChooserOpenPanel(std::function<Gtk::Window*()> getParent)
    : getParent_{std::move(getParent)} {}

void FileChooserOpenPanel::run(const OpenPanelRequest& request, Completion completion) {
    const auto action = request.canChooseDirectories ? Gtk::FileChooser::Action::SELECT_FOLDER
                                                     : Gtk::FileChooser::Action::OPEN;
    // GTK choosers have no message line; the title carries the request.
    auto chooser = Gtk::FileChooserNative::create(request.title, action, "", "");
    if (Gtk::Window* parent = getParent_ ? getParent_() : nullptr)
        chooser->set_transient_for(*parent);
    chooser->set_modal(true);
    chooser->set_select_multiple(request.allowsMultipleSelection);
    // The chooser keeps itself alive through the captured reference until it answers.
    chooser->signal_response().connect(
        [chooser, completion = std::move(completion)](int response) mutable {
            std::optional<std::filesystem::path> chosen;
            if (response == static_cast<int>(Gtk::ResponseType::ACCEPT)) {
                if (const auto file = chooser->get_file(); file && !file->get_path().empty())
                    chosen = std::filesystem::path{file->get_path()};
            }
            chooser->hide();
            auto done = std::move(completion);
            chooser.reset();
            done(std::move(chosen));
        });
    chooser->show();
}

} // namespace kelmo
