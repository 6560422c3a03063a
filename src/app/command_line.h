#pragma once

#include <functional>
#include <giomm/application.h>
#include <optional>
#include <string>
#include <vector>

namespace kelmo {

// The command-line options, with their help (--help, --help-all) and checks (an unknown
// option fails as in every GTK application). --version answers here; `otherwise` says
// what to do when no option has ended the run (-1: go on).
void addCommandLineOptions(Gio::Application& application, std::function<int()> otherwise);

// The file arguments of a command line: everything after the program name that is
// not an option ("-x", "--long"), and everything after "--".
std::vector<std::string> fileArguments(const std::vector<std::string>& arguments);

// Splits the file arguments into those that name an existing file and the rest.
struct CheckedFiles {
    std::vector<std::string> existing;
    std::vector<std::string> missing;
};
CheckedFiles checkFileArguments(const std::vector<std::string>& files);

// The command line without the missing files, so that they are never opened.
std::vector<std::string> withoutMissingFiles(const std::vector<std::string>& arguments,
                                             const std::vector<std::string>& missing);

} // namespace kelmo
