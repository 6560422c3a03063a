#pragma once

#include <optional>
#include <string>
#include <vector>

namespace kelmo {

// What "--help" (or "-h") and "--version" (or "-v") print; nothing when neither is
// given. They are answered before anything else, without a display.
std::optional<std::string> informationRequested(const std::vector<std::string>& arguments,
                                                const std::string& version);

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
