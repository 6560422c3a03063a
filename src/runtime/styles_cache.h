#pragma once

#include "runtime/resource_locator.h"

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace kelmo {

// The Tailwind rules that a JSX or TSX component's first frame used, kept so that
// the next run of the same source paints its first frame before Tailwind has loaded.
//
// An entry is CSS text (opaque here), in one file per entry named by its key: a
// SHA-256 of the styler's fingerprint and the source. A change to either the source
// or the Tailwind bundle gives a new key, so stale rules are never found. Writes are
// atomic; when the cache holds more than its limit, the least recently used
// entries go. Failures to read find nothing; failures to write are dropped.
class StylesCache {
public:
    StylesCache(std::filesystem::path directory, std::string stylerFingerprint,
                std::size_t entryLimit = 256);

    // The folder under the user's cache directory: kelmo/styles.
    static std::filesystem::path defaultDirectory();

    // Identifies the Tailwind bundle that the resources hold, by its size and
    // modification time. Empty when it is missing.
    static std::string fingerprintOf(const ResourceLocator& resources);

    std::string keyFor(std::string_view source) const;

    // The entry under that key; using it makes it the most recently used.
    std::optional<std::string> lookup(const std::string& key) const;
    void store(const std::string& key, std::string_view styles) const;

    const std::filesystem::path& directory() const { return directory_; }

private:
    std::filesystem::path fileFor(const std::string& key) const;
    void trim() const;

    std::filesystem::path directory_;
    std::string stylerFingerprint_;
    std::size_t entryLimit_;
};

} // namespace kelmo
