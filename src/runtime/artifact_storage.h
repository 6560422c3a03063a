#pragma once

#include <condition_variable>
#include <cstddef>
#include <filesystem>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace kelmo {

// The values artifacts keep with window.storage, persisted per artifact file: one
// file per artifact in a folder, named by a digest of the artifact's path, so that
// they survive reloads and restarts and no artifact sees another's values. Each
// artifact has two sets of keys, its own and the "shared" ones (in Kelmo there is one
// user, so shared only means a separate set).
//
// Keys and values are opaque text, compared byte for byte (the page sends them as
// JSON string literals, so that any string survives the trip). An artifact may keep
// up to `limit` bytes of keys and values in both sets together.
//
// The values of the artifacts in use are held in memory; changes are written by a
// thread of the storage's own, a moment after the first one (a burst of changes is
// one write), atomically (write, then rename). Destroying the storage writes what is
// still pending. A file that cannot be read gives an empty set; failed writes are
// dropped. Every web view of a process uses the same storage for a folder (shared()),
// so that all of them see the same values.
class ArtifactStorage {
public:
    static constexpr std::size_t defaultLimit = 5 * 1024 * 1024;

    explicit ArtifactStorage(std::filesystem::path directory, std::size_t limit = defaultLimit);
    ~ArtifactStorage();
    ArtifactStorage(const ArtifactStorage&) = delete;
    ArtifactStorage& operator=(const ArtifactStorage&) = delete;

    // The folder under the user's data directory: kelmo/artifact-storage.
    static std::filesystem::path defaultDirectory();

    // The storage of that folder that the process's web views share.
    static std::shared_ptr<ArtifactStorage> shared(const std::filesystem::path& directory);

    std::optional<std::string> get(const std::filesystem::path& artifact, const std::string& key,
                                   bool shared);
    // False, and nothing changed, when the value would take the artifact past its limit.
    bool set(const std::filesystem::path& artifact, const std::string& key,
             const std::string& value, bool shared);
    // Whether the key was there.
    bool remove(const std::filesystem::path& artifact, const std::string& key, bool shared);
    // The keys of one set, sorted.
    std::vector<std::string> keys(const std::filesystem::path& artifact, bool shared);

    // Returns once every change made so far is on disk.
    void flush();

    // The file that holds the values of an artifact.
    std::filesystem::path fileFor(const std::filesystem::path& artifactFile) const;

    std::size_t limit() const { return limit_; }

private:
    struct Values {
        std::map<std::string, std::string> own;
        std::map<std::string, std::string> shared;
        std::size_t size = 0; // bytes of keys and values in both sets
        std::map<std::string, std::string>& of(bool sharedSet) { return sharedSet ? shared : own; }
    };
    struct Artifact {
        std::filesystem::path file;
        Values values;
        bool dirty = false;
    };

    Values read(const std::filesystem::path& file) const;
    Artifact& open(const std::filesystem::path& artifact);
    void changed(Artifact& artifact);
    void writeLoop();

    const std::filesystem::path directory_;
    const std::size_t limit_;
    // Shared with the writing thread, under mutex_: the artifacts in memory by storage
    // file, and those with changes not yet written.
    std::mutex mutex_;
    std::condition_variable wake_;
    std::condition_variable written_;
    std::map<std::filesystem::path, std::shared_ptr<Artifact>> open_;
    std::vector<std::shared_ptr<Artifact>> pending_;
    std::vector<std::shared_ptr<Artifact>> beingWritten_;
    bool stopping_ = false;
    std::thread writer_;
};

} // namespace kelmo
