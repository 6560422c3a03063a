#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>

namespace Gtk {
class Widget;
}

namespace kelmo {

// Where a save goes: asked with a title, a folder and a suggested name; answers the
// file, or nothing on Cancel.
using SaveChooser = std::function<void(
    const std::string& title, const std::filesystem::path& folder, const std::string& suggestedName,
    std::function<void(std::optional<std::filesystem::path>)>)>;

// A save dialog over the widget's window.
SaveChooser saveDialogOver(Gtk::Widget& over);

// Asks where to write the JSX or TSX artifact as one HTML file (beside it, under its
// name, by default), writes it whole or not at all, and calls `exported` with the
// file's name; a failure is told in a message dialog over the widget's window.
void exportAsHtml(Gtk::Widget& over, const std::filesystem::path& source, const SaveChooser& choose,
                  std::function<void(const std::string&)> exported);

// A message dialog over the widget's window.
void showProblem(Gtk::Widget& over, const std::string& what, const std::string& why);

} // namespace kelmo
