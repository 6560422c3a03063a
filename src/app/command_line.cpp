#include "app/command_line.h"

#include <algorithm>
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

std::optional<std::string> informationRequested(const std::vector<std::string>& arguments,
                                                const std::string& version) {
    for (std::size_t i = 1; i < arguments.size() && arguments[i] != "--"; ++i) {
        if (arguments[i] == "--help" || arguments[i] == "-h")
            return "Usage:\n"
                   "  kelmo [OPTION…] [FILE…]\n"
                   "\n"
                   "Runs web prototypes (.html, .htm, .jsx, .tsx) locally. Each FILE is\n"
                   "added to the library and shown; a running Kelmo receives them.\n"
                   "\n"
                   "Options:\n"
                   "  -h, --help       Show this help and quit\n"
                   "  -v, --version    Show the version and quit\n"
                   "  --export-html SOURCE OUT.html\n"
                   "                   Write the JSX or TSX artifact as one HTML file\n"
                   "                   that runs offline in any browser, and quit\n"
                   "  --snapshot SOURCE [--width N] OUT.png\n"
                   "                   Save a picture of the artifact's whole page,\n"
                   "                   N pixels wide (1024 by default), and quit\n";
        if (arguments[i] == "--version" || arguments[i] == "-v")
            return "Kelmo " + version + "\n";
    }
    return std::nullopt;
}

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

} // namespace kelmo
