#include "runtime/artifact_storage.h"

#include <glib.h>
#include <memory>
#include <system_error>

namespace kelmo {

namespace {

// On disk: one GVariant of type (a{ss}a{ss}), the artifact's own keys and the
// shared ones.
constexpr char valuesType[] = "(a{ss}a{ss})";

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

void readDictionary(GVariant* dictionary, std::map<std::string, std::string>& into) {
    GVariantIter iter;
    g_variant_iter_init(&iter, dictionary);
    const gchar* key = nullptr;
    const gchar* value = nullptr;
    while (g_variant_iter_next(&iter, "{&s&s}", &key, &value))
        into.emplace(key, value);
}

} // namespace

ArtifactStorage::ArtifactStorage(std::filesystem::path directory)
    : directory_{std::move(directory)} {}

std::filesystem::path ArtifactStorage::defaultDirectory() {
    return std::filesystem::path{g_get_user_data_dir()} / "kelmo" / "artifact-storage";
}

std::filesystem::path ArtifactStorage::fileFor(const std::filesystem::path& artifactFile) const {
    const std::string path = artifactFile.lexically_normal().string();
    gchar* digest = g_compute_checksum_for_string(G_CHECKSUM_SHA256, path.c_str(),
                                                  static_cast<gssize>(path.size()));
    std::filesystem::path file = directory_ / (std::string{digest} + ".gvariant");
    g_free(digest);
    return file;
}

void ArtifactStorage::setArtifact(const std::filesystem::path& artifactFile) {
    file_ = fileFor(artifactFile);
}

std::optional<std::string> ArtifactStorage::get(const std::string& key, bool shared) const {
    auto values = read();
    const auto& set = values.of(shared);
    if (const auto found = set.find(key); found != set.end())
        return found->second;
    return std::nullopt;
}

void ArtifactStorage::set(const std::string& key, const std::string& value, bool shared) {
    if (file_.empty())
        return;
    auto values = read();
    values.of(shared)[key] = value;
    write(values);
}

bool ArtifactStorage::remove(const std::string& key, bool shared) {
    auto values = read();
    if (values.of(shared).erase(key) == 0)
        return false;
    write(values);
    return true;
}

std::vector<std::string> ArtifactStorage::list(const std::string& prefix, bool shared) const {
    auto values = read();
    std::vector<std::string> keys;
    for (const auto& [key, value] : values.of(shared))
        if (key.compare(0, prefix.size(), prefix) == 0)
            keys.push_back(key);
    return keys;
}

ArtifactStorage::Values ArtifactStorage::read() const {
    Values values;
    if (file_.empty())
        return values;
    gchar* contents = nullptr;
    gsize length = 0;
    if (!g_file_get_contents(file_.c_str(), &contents, &length, nullptr))
        return values;
    GBytes* bytes = g_bytes_new_take(contents, length);
    Variant stored{
        g_variant_ref_sink(g_variant_new_from_bytes(G_VARIANT_TYPE(valuesType), bytes, FALSE))};
    g_bytes_unref(bytes);
    // A damaged file reads as empty rather than as garbage.
    if (!g_variant_is_normal_form(stored.get()))
        return values;
    Variant own{g_variant_get_child_value(stored.get(), 0)};
    Variant shared{g_variant_get_child_value(stored.get(), 1)};
    readDictionary(own.get(), values.own);
    readDictionary(shared.get(), values.shared);
    return values;
}

void ArtifactStorage::write(const Values& values) const {
    if (file_.empty())
        return;
    std::error_code ignored;
    std::filesystem::create_directories(directory_, ignored);
    Variant stored{g_variant_ref_sink(
        g_variant_new("(@a{ss}@a{ss})", dictionaryOf(values.own), dictionaryOf(values.shared)))};
    g_file_set_contents(file_.c_str(), static_cast<const gchar*>(g_variant_get_data(stored.get())),
                        static_cast<gssize>(g_variant_get_size(stored.get())), nullptr);
}

} // namespace kelmo
