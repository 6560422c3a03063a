#include "runtime/styles_cache.h"

#include "runtime/scheme_support.h"

#include <algorithm>
#include <glib.h>
#include <system_error>
#include <vector>

namespace kelmo {

namespace {

constexpr std::string_view entryExtension = ".css";

std::string sha256(std::string_view bytes) {
    GChecksum* checksum = g_checksum_new(G_CHECKSUM_SHA256);
    g_checksum_update(checksum, reinterpret_cast<const guchar*>(bytes.data()),
                      static_cast<gssize>(bytes.size()));
    std::string digest = g_checksum_get_string(checksum);
    g_checksum_free(checksum);
    return digest;
}

bool isKey(const std::string& key) {
    return key.size() == 64 &&
           std::all_of(key.begin(), key.end(), [](char c) { return g_ascii_isxdigit(c) != 0; });
}

} // namespace

StylesCache::StylesCache(std::filesystem::path directory, std::string stylerFingerprint,
                         std::size_t entryLimit)
    : directory_{std::move(directory)}, stylerFingerprint_{std::move(stylerFingerprint)},
      entryLimit_{std::max<std::size_t>(entryLimit, 1)} {}

std::filesystem::path StylesCache::defaultDirectory() {
    return std::filesystem::path{g_get_user_cache_dir()} / "kelmo" / "styles";
}

std::string StylesCache::fingerprintOf(const ResourceLocator& resources) {
    const auto tailwind = resources.url("kelmo-tailwind", "js");
    if (!tailwind)
        return {};
    std::error_code error;
    const auto size = std::filesystem::file_size(*tailwind, error);
    const auto time = std::filesystem::last_write_time(*tailwind, error);
    if (error)
        return {};
    return std::to_string(size) + ":" + std::to_string(time.time_since_epoch().count());
}

std::string StylesCache::keyFor(std::string_view source) const {
    std::string keyed = stylerFingerprint_;
    keyed.push_back('\0');
    keyed.append(source);
    return sha256(keyed);
}

std::filesystem::path StylesCache::fileFor(const std::string& key) const {
    return directory_ / (key + std::string{entryExtension});
}

std::optional<std::string> StylesCache::lookup(const std::string& key) const {
    if (!isKey(key) || stylerFingerprint_.empty())
        return std::nullopt;
    const auto file = fileFor(key);
    auto styles = readWholeFile(file);
    if (!styles || !isValidUtf8(*styles))
        return std::nullopt;
    std::error_code ignored;
    std::filesystem::last_write_time(file, std::filesystem::file_time_type::clock::now(), ignored);
    return styles;
}

void StylesCache::store(const std::string& key, std::string_view styles) const {
    if (!isKey(key) || stylerFingerprint_.empty() || !isValidUtf8(styles))
        return;
    std::error_code ignored;
    std::filesystem::create_directories(directory_, ignored);
    if (!g_file_set_contents(fileFor(key).c_str(), styles.data(),
                             static_cast<gssize>(styles.size()), nullptr))
        return;
    trim();
}

void StylesCache::trim() const {
    struct Entry {
        std::filesystem::path file;
        std::filesystem::file_time_type used;
    };
    std::vector<Entry> entries;
    std::error_code error;
    for (const auto& item : std::filesystem::directory_iterator{directory_, error}) {
        if (item.path().extension() != entryExtension)
            continue;
        std::error_code timeError;
        const auto used = item.last_write_time(timeError);
        if (!timeError)
            entries.push_back({item.path(), used});
    }
    if (entries.size() <= entryLimit_)
        return;
    const auto excess = static_cast<std::ptrdiff_t>(entries.size() - entryLimit_);
    std::nth_element(entries.begin(), entries.begin() + excess, entries.end(),
                     [](const Entry& a, const Entry& b) { return a.used < b.used; });
    for (auto entry = entries.begin(); entry != entries.begin() + excess; ++entry)
        std::filesystem::remove(entry->file, error);
}

} // namespace kelmo
