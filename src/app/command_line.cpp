#include "app/command_line.h"

#include <algorithm>
#include <cstdio>
#include <sys/stat.h>

namespace kelmo {
namespace {

// Calls visit(index, isFile) for every argument after the program name.
template <typename Visit>
void classifyArguments(const std::vector<std::string>& arguments, Visit visit) {
    bool optionsEnded = false;
    for (std::size_t i = 1; i < arguments.size(); ++i) {
        const std::string& argument = arguments[i];
        if (!optionsEnded && argument == "--") {
            optionsEnded = true;
            visit(i, false);
            continue;
        }
        const bool isOption = !optionsEnded && argument.size() > 1 && argument.front() == '-';
        visit(i, !isOption);
    }
}

} // namespace

std::vector<std::string> fileArguments(const std::vector<std::string>& arguments) {
    std::vector<std::string> files;
    classifyArguments(arguments, [&](std::size_t i, bool isFile) {
        if (isFile)
            files.push_back(arguments[i]);
    });
    return files;
}

CheckedFiles checkFileArguments(const std::vector<std::string>& files) {
    CheckedFiles checked;
    for (const auto& file : files) {
        struct stat info {};
        if (!file.empty() && ::stat(file.c_str(), &info) == 0)
            checked.existing.push_back(file);
        else
            checked.missing.push_back(file);
    }
    return checked;
}

std::vector<std::string> withoutMissingFiles(const std::vector<std::string>& arguments,
                                             const std::vector<std::string>& missing) {
    if (arguments.empty())
        return {};
    std::vector<std::string> kept{arguments.front()};
    classifyArguments(arguments, [&](std::size_t i, bool isFile) {
        const bool isMissing =
            isFile && std::find(missing.begin(), missing.end(), arguments[i]) != missing.end();
        if (!isMissing)
            kept.push_back(arguments[i]);
    });
    return kept;
}

// The options --help lists. --export-html and --snapshot are handled before the
// application starts (batch_commands.h), as the first option; they are listed here so
// that the help shows them, and said to be misplaced when they come later.
void addCommandLineOptions(Gio::Application& application, std::function<int()> otherwise) {
    application.set_option_context_parameter_string("[FILE…]");
    application.set_option_context_summary(
        "Runs web prototypes (.html, .htm, .jsx, .tsx) locally. Each FILE "
        "is added to the library\nand shown; a running Kelmo receives "
        "them.");
    application.add_main_option_entry(Gio::Application::OptionType::BOOL, "version", 'v',
                                      "Show the version and quit");
    application.add_main_option_entry(
        Gio::Application::OptionType::FILENAME, "export-html", '\0',
        "Write the JSX or TSX artifact SOURCE as one HTML file that runs "
        "offline in any browser, and quit",
        "SOURCE OUT.html");
    application.add_main_option_entry(
        Gio::Application::OptionType::FILENAME, "snapshot", '\0',
        "Save a picture of the artifact's whole page, N pixels wide (1024 by "
        "default), and quit",
        "SOURCE [--width N] OUT.png");
    application.add_main_option_entry(Gio::Application::OptionType::INT, "width", '\0',
                                      "The page's width for --snapshot", "N");
    application.signal_handle_local_options().connect(
        [otherwise = std::move(otherwise)](const Glib::RefPtr<Glib::VariantDict>& options) {
            if (options->contains("version")) {
                std::printf("Kelmo %s\n", KELMO_VERSION);
                return 0;
            }
            for (const char* command : {"export-html", "snapshot"})
                if (options->contains(command)) {
                    std::fprintf(stderr, "kelmo: --%s must come first: kelmo --%s …\n", command,
                                 command);
                    return 1;
                }
            return otherwise();
        },
        false);
}

} // namespace kelmo
