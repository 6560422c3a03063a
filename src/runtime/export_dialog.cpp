#include "runtime/export_dialog.h"

#include "runtime/html_export.h"
#include "runtime/save_dialog.h"

#include <glibmm/fileutils.h>
#include <gtkmm/messagedialog.h>
#include <gtkmm/window.h>
#include <memory>

namespace kelmo {

SaveChooser saveDialogOver(Gtk::Widget& over) {
    return [&over](const std::string& title, const std::filesystem::path& folder,
                   const std::string& name,
                   auto chosen) { askWhereToSave(over, title, folder, name, std::move(chosen)); };
}

void showProblem(Gtk::Widget& over, const std::string& what, const std::string& why) {
    auto* dialog =
        new Gtk::MessageDialog(what, false, Gtk::MessageType::ERROR, Gtk::ButtonsType::OK, true);
    if (auto* window = dynamic_cast<Gtk::Window*>(over.get_root()))
        dialog->set_transient_for(*window);
    dialog->set_secondary_text(why);
    dialog->signal_response().connect([dialog](int) { delete dialog; });
    dialog->show();
}

void exportAsHtml(Gtk::Widget& over, const std::filesystem::path& source, const SaveChooser& choose,
                  std::function<void(const std::string&)> exported) {
    // The widget may go before the answers come: they then do nothing.
    auto alive = std::make_shared<sigc::trackable>();
    over.signal_destroy().connect([alive]() mutable { alive.reset(); });
    std::weak_ptr<sigc::trackable> watch = alive;
    choose("Export as HTML", source.parent_path(), source.stem().string() + ".html",
           [&over, source, watch,
            exported = std::move(exported)](std::optional<std::filesystem::path> file) {
               if (!file || watch.expired())
                   return;
               // The job owns itself until it has answered.
               auto job = std::make_shared<std::unique_ptr<ArtifactCompiler::Job>>();
               *job = HtmlExport::exportFileLater(source, [&over, job, watch, file = *file,
                                                           exported](HtmlExportResult result) {
                   job->reset();
                   if (watch.expired())
                       return;
                   if (const auto* failure = std::get_if<HtmlExportFailure>(&result)) {
                       showProblem(over, "The artifact could not be exported", failure->message);
                       return;
                   }
                   try {
                       Glib::file_set_contents(file.string(), std::get<std::string>(result));
                       exported(file.filename().string());
                   } catch (const Glib::Error& error) {
                       showProblem(over, "The artifact could not be exported", error.what());
                   }
               });
           });
}

} // namespace kelmo
