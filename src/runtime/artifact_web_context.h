#pragma once

#include <webkit/webkit.h>

namespace kelmo {

// The web context of every artifact web view, made on first use and kept for the life
// of the process: the artifact schemes are registered on it, and its web processes run
// under a memory limit. A page past the limit has its process ended, which the view
// reports as WEBKIT_WEB_PROCESS_EXCEEDED_MEMORY_LIMIT.
WebKitWebContext* artifactWebContext();

// The limit in megabytes: a quarter of the machine's memory, between 1 and 4 GB.
unsigned webProcessMemoryLimit();

} // namespace kelmo
