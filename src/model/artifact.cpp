#include "model/artifact.h"

#include <algorithm>
#include <sys/stat.h>

namespace kelmo {
namespace {

std::string_view lastComponent(const std::string& path) {
    const auto slash = path.find_last_of('/');
    return slash == std::string::npos ? std::string_view{path}
                                      : std::string_view{path}.substr(slash + 1);
}

} // namespace

std::string lowercaseExtension(const std::filesystem::path& url) {
    const std::string_view component = lastComponent(url.native());
    const auto dot = component.find_last_of('.');
    if (dot == std::string_view::npos)
        return {};
    std::string extension{component.substr(dot + 1)};
    std::transform(extension.begin(), extension.end(), extension.begin(), [](unsigned char c) {
        return static_cast<char>(c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c);
    });
    return extension;
}

bool hasSupportedExtension(const std::filesystem::path& url) {
    const std::string extension = lowercaseExtension(url);
    return std::find(supportedExtensions.begin(), supportedExtensions.end(), extension) !=
           supportedExtensions.end();
}

ArtifactType detectType(const std::filesystem::path& url) {
    const std::string extension = lowercaseExtension(url);
    if (extension == "jsx")
        return {ArtifactType::Kind::jsx, url};
    if (extension == "tsx")
        return {ArtifactType::Kind::tsx, url};
    return {ArtifactType::Kind::html, url};
}

std::string nameWithoutExtension(const std::filesystem::path& url) {
    const std::string_view component = lastComponent(url.native());
    const auto dot = component.find_last_of('.');
    return std::string{dot == std::string_view::npos ? component : component.substr(0, dot)};
}

std::optional<Clock::time_point> contentModificationTime(const std::filesystem::path& url) {
    struct stat info {};
    if (::stat(url.c_str(), &info) != 0)
        return std::nullopt;
    const auto sinceEpoch =
        std::chrono::seconds{info.st_mtim.tv_sec} + std::chrono::nanoseconds{info.st_mtim.tv_nsec};
    return Clock::time_point{std::chrono::duration_cast<Clock::duration>(sinceEpoch)};
}

Artifact Artifact::make(const std::filesystem::path& url, Clock::time_point modifiedAt) {
    return Artifact{Uuid::random(), nameWithoutExtension(url), url, detectType(url), modifiedAt};
}

Artifact Artifact::from(const std::filesystem::path& url) {
    return make(url, contentModificationTime(url).value_or(Clock::now()));
}

} // namespace kelmo
