#pragma once

#include "store/artifact_store.h"

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace kelmo {

// Whether a process owns the name on the session bus; false when there is no bus to ask.
bool isNameOwnedOnSessionBus(const std::string& name);

// The JSX or TSX file that a start opens into: its last file argument, which is shown
// last, or without any, the store's selection. Nothing when that is an HTML page.
std::optional<std::filesystem::path> artifactToCompileAhead(const ArtifactStore& store,
                                                            const std::vector<std::string>& files);

} // namespace kelmo
