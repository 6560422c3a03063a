#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>

namespace Gtk {
class Widget;
}

namespace kelmo {

// A save dialog over the widget's window, in the folder, with the name suggested; it
// confirms before it replaces a file. `chosen` gets the file, or nothing on Cancel.
void askWhereToSave(Gtk::Widget& over, const std::string& title,
                    const std::optional<std::filesystem::path>& folder,
                    const std::string& suggestedName,
                    std::function<void(std::optional<std::filesystem::path>)> chosen);

} // namespace kelmo
