#pragma once

#include <vector>

namespace kelmo::bench {

// Milliseconds of each full scan of a folder of `files` entries, three in five of
// them artifacts, into an empty library: one figure per run.
std::vector<double> folderScanTimes(int files, int runs);

// Milliseconds from a new .jsx file being created in a watched folder of `files`
// entries until the store lists it: one figure per run.
std::vector<double> watchedFolderAddTimes(int files, int runs);

// A burst in a watched folder of `files` entries shown in a window (sidebar and
// library): 1,000 files created, 500 renamed and 1,000 deleted as fast as the disk
// takes them, while the main loop ticks every 5 ms.
struct FolderBurstFigures {
    double longestStall = 0;          // ms the main loop went without answering, at most
    double settledAfterLastEvent = 0; // ms from the last file operation to a right library
};
std::vector<FolderBurstFigures> folderBurstFigures(int files, int runs);

// The longest the main loop went without answering (ms) while the library grid of a
// watched folder of `files` artifacts scrolls from top to bottom and back, a step a
// frame; with a picture on every card, or none. One figure per run.
std::vector<double> libraryScrollStalls(int files, bool withPictures, int runs);

// Milliseconds from a JSX file that the player runs being saved (written in place, or
// renamed over as editors save, in turn) until its page shows the new version: one
// figure per save.
std::vector<double> liveReloadTimes(int saves);

} // namespace kelmo::bench
