#pragma once

#include <filesystem>
#include <string>

namespace kelmo::bench {

// Writes the floor's page for a component that Kelmo runs with libraries: the page
// template (fixtures/libraries-floor.html) with the component compiled by Kelmo's
// own compiler and the application's resource folder filled in. Throws when the
// template, a resource or the compile is missing.
void writeFloorPage(const std::filesystem::path& component,
                    const std::filesystem::path& pageTemplate, const std::filesystem::path& page);

} // namespace kelmo::bench
