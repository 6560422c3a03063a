#include "runtime/artifact_storage.h"

#include "runtime/artifact_origin.h"
#include "runtime/scheme_support.h"

#include <algorithm>
#include <chrono>
#include <glib.h>
#include <system_error>
#include <utility>

namespace kelmo {

namespace {

// On disk: one GVariant of type (a{ss}a{ss}), the artifact's own keys and the
// shared ones, each key and value a JSON string literal.
constexpr char valuesType[] = "(a{ss}a{ss})";
constexpr char valuesExtension[] = ".values";
// Files of earlier versions hold the same type with the strings as they were given.
constexpr char plainValuesExtension[] = ".gvariant";

// A burst of changes is written once, this long after it began.
constexpr auto writeDelay = std::chrono::milliseconds{150};

struct VariantUnref {
    void operator()(GVariant* variant) const { g_variant_unref(variant); }
};
using Variant = std::unique_ptr<GVariant, VariantUnref>;

GVariant* dictionaryOf(const std::map<std::string, std::string>& values) {
    GVariantBuilder builder;
    g_variant_builder_init(&builder, G_VARIANT_TYPE("a{ss}"));
    for (const auto& [key, value] : values)
        g_variant_builder_add(&builder, "{ss}", key.c_str(), value.c_str());
    return g_variant_builder_end(&builder);
}

// False when the file is missing or damaged.
bool readDictionaries(const std::filesystem::path& file, bool plain,
                      std::map<std::string, std::string>& own,
                      std::map<std::string, std::string>& shared) {
    gchar* contents = nullptr;
    gsize length = 0;
    if (!g_file_get_contents(file.c_str(), &contents, &length, nullptr))
        return false;
    GBytes* bytes = g_bytes_new_take(contents, length);
    Variant stored{
        g_variant_ref_sink(g_variant_new_from_bytes(G_VARIANT_TYPE(valuesType), bytes, FALSE))};
    g_bytes_unref(bytes);
    // A damaged file reads as empty rather than as garbage.
    if (!g_variant_is_normal_form(stored.get()))
        return false;
    for (int child = 0; child < 2; ++child) {
        Variant dictionary{g_variant_get_child_value(stored.get(), child)};
        GVariantIter iter;
        g_variant_iter_init(&iter, dictionary.get());
        const gchar* key = nullptr;
        const gchar* value = nullptr;
        auto& into = child == 0 ? own : shared;
        while (g_variant_iter_next(&iter, "{&s&s}", &key, &value)) {
            // Earlier versions kept the strings as given: they are found under the
            // literals the page now sends.
            if (plain)
                into.emplace(jsonStringLiteral(key), jsonStringLiteral(value));
            else
                into.emplace(key, value);
        }
    }
    return true;
}

void write(const std::filesystem::path& file, const std::map<std::string, std::string>& own,
           const std::map<std::string, std::string>& shared) {
    std::error_code ignored;
    std::filesystem::create_directories(file.parent_path(), ignored);
    Variant stored{g_variant_ref_sink(
        g_variant_new("(@a{ss}@a{ss})", dictionaryOf(own), dictionaryOf(shared)))};
    g_file_set_contents(file.c_str(), static_cast<const gchar*>(g_variant_get_data(stored.get())),
                        static_cast<gssize>(g_variant_get_size(stored.get())), nullptr);
}

} // namespace

ArtifactStorage::ArtifactStorage(std::filesystem::path directory, std::size_t limit)
    : directory_{std::move(directory)}, limit_{limit}, writer_{[this] { writeLoop(); }} {}

ArtifactStorage::~ArtifactStorage() {
    {
        std::lock_guard lock{mutex_};
        stopping_ = true;
    }
    wake_.notify_all();
    writer_.join();
}

std::filesystem::path ArtifactStorage::defaultDirectory() {
    return std::filesystem::path{g_get_user_data_dir()} / "kelmo" / "artifact-storage";
}

std::filesystem::path ArtifactStorage::fileFor(const std::filesystem::path& artifactFile) const {
    return directory_ / (pathDigest(artifactFile) + valuesExtension);
}

std::shared_ptr<ArtifactStorage> ArtifactStorage::shared(const std::filesystem::path& directory) {
    static std::mutex registryMutex;
    static std::map<std::filesystem::path, std::weak_ptr<ArtifactStorage>> registry;
    std::lock_guard lock{registryMutex};
    auto& entry = registry[directory];
    auto storage = entry.lock();
    if (!storage) {
        storage = std::make_shared<ArtifactStorage>(directory);
        entry = storage;
    }
    return storage;
}

// Called under the lock. Artifacts with nothing left to write leave memory once many
// are open; their files are up to date.
ArtifactStorage::Artifact& ArtifactStorage::open(const std::filesystem::path& artifact) {
    const auto file = fileFor(artifact);
    if (const auto found = open_.find(file); found != open_.end())
        return *found->second;
    constexpr std::size_t keptInMemory = 16;
    if (open_.size() >= keptInMemory)
        // Held only here: neither waiting to be written nor being written.
        std::erase_if(open_, [](const auto& entry) { return entry.second.use_count() == 1; });
    return *open_.emplace(file, std::make_shared<Artifact>(Artifact{file, read(file)}))
                .first->second;
}

ArtifactStorage::Values ArtifactStorage::read(const std::filesystem::path& file) const {
    Values values;
    if (!readDictionaries(file, false, values.own, values.shared)) {
        values = {};
        auto plainFile = file;
        plainFile.replace_extension(plainValuesExtension);
        if (!readDictionaries(plainFile, true, values.own, values.shared))
            values = {};
    }
    for (const auto* set : {&values.own, &values.shared})
        for (const auto& [key, value] : *set)
            values.size += key.size() + value.size();
    return values;
}

std::optional<std::string> ArtifactStorage::get(const std::filesystem::path& artifact,
                                                const std::string& key, bool shared) {
    std::lock_guard lock{mutex_};
    const auto& set = open(artifact).values.of(shared);
    if (const auto found = set.find(key); found != set.end())
        return found->second;
    return std::nullopt;
}

bool ArtifactStorage::set(const std::filesystem::path& artifact, const std::string& key,
                          const std::string& value, bool shared) {
    std::lock_guard lock{mutex_};
    auto& opened = open(artifact);
    auto& values = opened.values;
    auto& set = values.of(shared);
    const auto found = set.find(key);
    const std::size_t before = found == set.end() ? 0 : key.size() + found->second.size();
    const std::size_t size = values.size - before + key.size() + value.size();
    if (size > limit_)
        return false;
    set[key] = value;
    values.size = size;
    changed(opened);
    return true;
}

bool ArtifactStorage::remove(const std::filesystem::path& artifact, const std::string& key,
                             bool shared) {
    std::lock_guard lock{mutex_};
    auto& opened = open(artifact);
    auto& set = opened.values.of(shared);
    const auto found = set.find(key);
    if (found == set.end())
        return false;
    opened.values.size -= key.size() + found->second.size();
    set.erase(found);
    changed(opened);
    return true;
}

std::vector<std::string> ArtifactStorage::keys(const std::filesystem::path& artifact, bool shared) {
    std::lock_guard lock{mutex_};
    std::vector<std::string> keys;
    for (const auto& [key, value] : open(artifact).values.of(shared))
        keys.push_back(key);
    return keys;
}

// Called under the lock.
void ArtifactStorage::changed(Artifact& artifact) {
    if (!artifact.dirty) {
        artifact.dirty = true;
        pending_.push_back(open_.at(artifact.file));
    }
    wake_.notify_all();
}

void ArtifactStorage::flush() {
    std::unique_lock lock{mutex_};
    wake_.notify_all();
    written_.wait(lock, [this] { return pending_.empty() && beingWritten_.empty(); });
}

// Writes each artifact with changes, a moment after its first change, with the lock
// released while the file is written: the page's calls wait only for the copy.
void ArtifactStorage::writeLoop() {
    std::unique_lock lock{mutex_};
    while (true) {
        wake_.wait(lock, [this] { return stopping_ || !pending_.empty(); });
        if (pending_.empty())
            return;
        if (!stopping_)
            wake_.wait_for(lock, writeDelay, [this] { return stopping_; });
        beingWritten_ = std::exchange(pending_, {});
        for (auto& artifact : beingWritten_) {
            artifact->dirty = false;
            const auto own = artifact->values.own;
            const auto shared = artifact->values.shared;
            lock.unlock();
            write(artifact->file, own, shared);
            lock.lock();
        }
        beingWritten_.clear();
        written_.notify_all();
    }
}

} // namespace kelmo
