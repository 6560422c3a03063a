#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>

namespace kelmo {

// What a file or folder chooser is asked to show.
struct OpenPanelRequest {
    std::string title;
    std::string message;
    bool canChooseFiles = true;
    bool canChooseDirectories = false;
    bool allowsMultipleSelection = false;
};

// A modal chooser for one file or folder. The answer arrives later on the main
// loop: the chosen location, or nothing when the user cancelled.
class OpenPanel {
public:
    using Completion = std::function<void(std::optional<std::filesystem::path>)>;

    virtual ~OpenPanel() = default;
    virtual void run(const OpenPanelRequest& request, Completion completion) = 0;
};

} // namespace kelmo
