#pragma once

#include <vector>

namespace kelmo::bench {

// Milliseconds of each full scan of a folder of `files` entries, three in five of
// them artifacts, into an empty library: one figure per run.
std::vector<double> folderScanTimes(int files, int runs);

// Milliseconds from a new .jsx file being created in a watched folder of `files`
// entries until the store lists it: one figure per run.
std::vector<double> watchedFolderAddTimes(int files, int runs);

} // namespace kelmo::bench
