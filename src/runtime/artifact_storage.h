#pragma once

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace kelmo {

// The values an artifact keeps with window.storage, persisted per artifact file:
// one file per artifact in a folder, named by a digest of the artifact's path, so
// that they survive reloads and restarts and no artifact sees another's values.
// Each artifact has two sets of keys, its own and the "shared" ones (in Kelmo there
// is one user, so shared only means a separate set).
//
// Every operation reads the artifact's file; every change rewrites it atomically.
// Failures to read give an empty set; failures to write are dropped.
class ArtifactStorage {
public:
    explicit ArtifactStorage(std::filesystem::path directory);

    // The folder under the user's data directory: kelmo/artifact-storage.
    static std::filesystem::path defaultDirectory();

    // Chooses the artifact whose values the operations reach; none at first, and
    // then every operation finds nothing and keeps nothing.
    void setArtifact(const std::filesystem::path& artifactFile);

    std::optional<std::string> get(const std::string& key, bool shared) const;
    void set(const std::string& key, const std::string& value, bool shared);
    // Whether the key was there.
    bool remove(const std::string& key, bool shared);
    // The keys that start with the prefix, sorted.
    std::vector<std::string> list(const std::string& prefix, bool shared) const;

    // The file that holds the values of an artifact.
    std::filesystem::path fileFor(const std::filesystem::path& artifactFile) const;

private:
    struct Values {
        std::map<std::string, std::string> own;
        std::map<std::string, std::string> shared;
        std::map<std::string, std::string>& of(bool sharedSet) { return sharedSet ? shared : own; }
    };

    Values read() const;
    void write(const Values& values) const;

    std::filesystem::path directory_;
    std::filesystem::path file_;
};

} // namespace kelmo
