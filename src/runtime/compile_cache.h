#pragma once

#include "runtime/resource_locator.h"

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace kelmo {

// What Babel made of a JSX or TSX source, kept so that an unchanged artifact
// starts without loading and running the compiler at all.
//
// An entry is the compiled module as the compiler script gave it (opaque text here),
// in one file per entry named by its key: a SHA-256 of the compiler's fingerprint
// and the source. A change to either the source or the compiler (the compiler
// script or the Babel bundle) gives a new key, so stale output is never found. Writes are
// atomic; when the cache holds more than its limit, the least recently used
// entries go. Failures to read find nothing; failures to write are dropped.
class CompileCache {
public:
    CompileCache(std::filesystem::path directory, std::string compilerFingerprint,
                 std::size_t entryLimit = 256);

    // The folder under the user's cache directory: kelmo/compiled.
    static std::filesystem::path defaultDirectory();

    // Identifies the compiler that the resources hold: the compiler script's bytes and
    // the Babel bundle's size and modification time. Empty when either is missing.
    static std::string fingerprintOf(const ResourceLocator& resources);

    std::string keyFor(std::string_view source) const;
    // The key of something else kept for the same source (its styles, say) under
    // that source's key.
    static std::string companionKey(const std::string& key, std::string_view what);

    // The entry under that key; using it makes it the most recently used.
    std::optional<std::string> lookup(const std::string& key) const;
    void store(const std::string& key, std::string_view compiled) const;

    const std::filesystem::path& directory() const { return directory_; }

private:
    std::filesystem::path fileFor(const std::string& key) const;
    void trim() const;

    std::filesystem::path directory_;
    std::string compilerFingerprint_;
    std::size_t entryLimit_;
};

} // namespace kelmo
