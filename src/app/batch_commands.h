#pragma once

#include <optional>
#include <string>
#include <vector>

namespace kelmo {

// Commands that do their work and quit, without a window of their own:
//   kelmo --export-html SOURCE OUT.html   the artifact as one offline HTML file
//   kelmo --snapshot SOURCE [--width N] OUT.png
//                                         a picture of the artifact's whole page
// The exit status when the command line is one of them (0 on success, 1 with a
// message on standard error otherwise); nothing when it is not.
std::optional<int> runBatchCommand(const std::vector<std::string>& arguments);

} // namespace kelmo
