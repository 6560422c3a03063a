#pragma once

#include "model/artifact.h"

#include <cstdint>
#include <optional>
#include <string>

namespace kelmo {

// "1023 B", "1.0 KB", "10240.0 KB": bytes below 1024, otherwise kilobytes with one
// decimal and no larger unit.
std::string fileSizeString(std::uint64_t bytes);

// The size of the file at the path, or 0 when it cannot be read.
std::uint64_t fileSizeOrZero(const std::string& path);

// The date relative to now in the short style of the user's locale, such as
// "3 hr. ago" or "2 days ago": the largest calendar unit (years down to seconds)
// in which the two moments differ decides the phrase.
std::string relativeDateString(Clock::time_point date, Clock::time_point now = Clock::now());

// "1 file", "2 files", "0 files".
std::string fileCountString(std::size_t count);

// A card or row as assistive technologies read it, from the texts it shows: the name,
// the type's badge and the age ("dashboard, JSX, modified 3 min. ago").
std::string itemSummary(const Artifact& artifact, const std::string& age);

} // namespace kelmo
