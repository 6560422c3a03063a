#include "process_memory.h"

#include "child_process.h"

#include <fstream>
#include <string>

namespace kelmo::bench {
namespace {

// Adds the "Rss:" and "Pss:" totals of /proc/<pid>/smaps_rollup (in KiB); false when
// the process is gone or its memory cannot be read.
bool addRollup(pid_t pid, Footprint& footprint) {
    std::ifstream rollup{"/proc/" + std::to_string(pid) + "/smaps_rollup"};
    bool counted = false;
    std::string line;
    while (std::getline(rollup, line)) {
        if (line.starts_with("Pss:")) {
            footprint.pssKiB += std::stol(line.substr(4));
            counted = true;
        } else if (line.starts_with("Rss:")) {
            footprint.rssKiB += std::stol(line.substr(4));
        }
    }
    return counted;
}

} // namespace

Footprint footprintOf(pid_t root) {
    Footprint footprint;
    if (addRollup(root, footprint))
        ++footprint.processes;
    for (pid_t descendant : descendantsOf(root)) {
        if (addRollup(descendant, footprint))
            ++footprint.processes;
    }
    return footprint;
}

} // namespace kelmo::bench
