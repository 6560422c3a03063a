#include "runtime/compile_cache.h"

#include "runtime/scheme_support.h"

#include <algorithm>
#include <glib.h>
#include <system_error>
#include <vector>

namespace kelmo {

namespace {

constexpr std::string_view entryExtension = ".compiled";

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

CompileCache::CompileCache(std::filesystem::path directory, std::string compilerFingerprint,
                           std::size_t entryLimit)
    : directory_{std::move(directory)}, compilerFingerprint_{std::move(compilerFingerprint)},
      entryLimit_{std::max<std::size_t>(entryLimit, 1)} {}

std::filesystem::path CompileCache::defaultDirectory() {
    return std::filesystem::path{g_get_user_cache_dir()} / "kelmo" / "compiled";
}

std::string CompileCache::fingerprintOf(const ResourceLocator& resources) {
    const auto compiler = resources.url("artifact-compiler", "js");
    const auto babel = resources.url("babel.min", "js");
    if (!compiler || !babel)
        return {};
    const auto compilerBytes = readWholeFile(*compiler);
    std::error_code error;
    const auto babelSize = std::filesystem::file_size(*babel, error);
    const auto babelTime = std::filesystem::last_write_time(*babel, error);
    if (!compilerBytes || error)
        return {};
    return sha256(*compilerBytes) + ":" + std::to_string(babelSize) + ":" +
           std::to_string(babelTime.time_since_epoch().count());
}

std::string CompileCache::companionKey(const std::string& key, std::string_view what) {
    return sha256(key + ":" + std::string{what});
}

std::string CompileCache::keyFor(std::string_view source) const {
    std::string keyed = compilerFingerprint_;
    keyed.push_back('\0');
    keyed.append(source);
    return sha256(keyed);
}

std::filesystem::path CompileCache::fileFor(const std::string& key) const {
    return directory_ / (key + std::string{entryExtension});
}

std::optional<std::string> CompileCache::lookup(const std::string& key) const {
    if (!isKey(key) || compilerFingerprint_.empty())
        return std::nullopt;
    const auto file = fileFor(key);
    auto compiled = readWholeFile(file);
    if (!compiled || !isValidUtf8(*compiled))
        return std::nullopt;
    std::error_code ignored;
    std::filesystem::last_write_time(file, std::filesystem::file_time_type::clock::now(), ignored);
    return compiled;
}

void CompileCache::store(const std::string& key, std::string_view compiled) const {
    if (!isKey(key) || compilerFingerprint_.empty() || !isValidUtf8(compiled))
        return;
    std::error_code ignored;
    std::filesystem::create_directories(directory_, ignored);
    if (!g_file_set_contents(fileFor(key).c_str(), compiled.data(),
                             static_cast<gssize>(compiled.size()), nullptr))
        return;
    trim();
}

void CompileCache::trim() const {
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
