#pragma once

#include <sys/types.h>

namespace kelmo::bench {

// The memory a process and everything it started hold, summed over the tree.
struct Footprint {
    long pssKiB = 0; // proportional set size: shared pages split among their users
    long rssKiB = 0;
    int processes = 0;
};

Footprint footprintOf(pid_t root);

} // namespace kelmo::bench
