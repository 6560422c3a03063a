#include "model/artifact.h"

#include <algorithm>
#include <glib.h>
#include <sys/stat.h>

namespace kelmo {
namespace {

std::string_view lastComponent(std::string_view path) {
    const auto slash = path.find_last_of('/');
    return slash == std::string_view::npos ? path : path.substr(slash + 1);
}

// The text after the last dot of the last component, case unchanged.
std::string_view rawExtension(std::string_view path) {
    const std::string_view component = lastComponent(path);
    const auto dot = component.find_last_of('.');
    return dot == std::string_view::npos ? std::string_view{} : component.substr(dot + 1);
}

} // namespace

std::string lowercaseExtension(const std::string& url) {
    std::string extension{rawExtension(url)};
    for (char& c : extension)
        c = g_ascii_tolower(c);
    return extension;
}

bool hasSupportedExtension(std::string_view fileNameOrPath) {
    const std::string_view extension = rawExtension(fileNameOrPath);
    return std::any_of(supportedExtensions.begin(), supportedExtensions.end(),
                       [&extension](std::string_view supported) {
                           return extension.size() == supported.size() &&
                                  g_ascii_strncasecmp(extension.data(), supported.data(),
                                                      supported.size()) == 0;
                       });
}

bool isRegularFile(const std::string& path) {
    struct stat info {};
    return ::stat(path.c_str(), &info) == 0 && S_ISREG(info.st_mode);
}

ArtifactType detectType(const std::string& url) {
    const std::string extension = lowercaseExtension(url);
    if (extension == "jsx")
        return {ArtifactType::Kind::jsx, url};
    if (extension == "tsx")
        return {ArtifactType::Kind::tsx, url};
    return {ArtifactType::Kind::html, url};
}

std::string nameWithoutExtension(const std::string& url) {
    const std::string_view component = lastComponent(url);
    const auto dot = component.find_last_of('.');
    return displayName(dot == std::string_view::npos ? component : component.substr(0, dot));
}

std::string displayName(std::string_view fileName) {
    const std::string bytes{fileName};
    gchar* shown = g_filename_display_name(bytes.c_str());
    std::string text{shown};
    g_free(shown);
    return text;
}

std::optional<Clock::time_point> contentModificationTime(const std::string& url) {
    struct stat info {};
    if (::stat(url.c_str(), &info) != 0)
        return std::nullopt;
    const auto sinceEpoch =
        std::chrono::seconds{info.st_mtim.tv_sec} + std::chrono::nanoseconds{info.st_mtim.tv_nsec};
    return Clock::time_point{std::chrono::duration_cast<Clock::duration>(sinceEpoch)};
}

Artifact Artifact::make(const std::string& url, Clock::time_point modifiedAt) {
    return Artifact{Uuid::random(), nameWithoutExtension(url), url, detectType(url), modifiedAt};
}

Artifact Artifact::from(const std::string& url) {
    return make(url, contentModificationTime(url).value_or(Clock::now()));
}

} // namespace kelmo
