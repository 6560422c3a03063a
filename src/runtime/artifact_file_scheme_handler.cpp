#include "runtime/artifact_file_scheme_handler.h"

#include "runtime/scheme_support.h"

#include <algorithm>
#include <array>
#include <gio/gio.h>
#include <glib.h>
#include <memory>
#include <sys/stat.h>

namespace kelmo {

namespace {

struct GFreeDeleter {
    void operator()(void* memory) const { g_free(memory); }
};
using GCharPtr = std::unique_ptr<char, GFreeDeleter>;

// The real path (links followed), or nothing when the file does not exist.
std::optional<std::filesystem::path> realPath(const std::filesystem::path& path) {
    std::error_code error;
    auto canonical = std::filesystem::canonical(path, error);
    if (error)
        return std::nullopt;
    return canonical;
}

bool isInside(const std::filesystem::path& file, const std::filesystem::path& folder) {
    const auto& inner = file.native();
    const auto& outer = folder.native();
    if (outer == "/")
        return inner.size() > 1;
    return inner.size() > outer.size() && inner.compare(0, outer.size(), outer) == 0 &&
           inner[outer.size()] == '/';
}

} // namespace

void ArtifactFileSchemeHandler::setRoot(const std::filesystem::path& folder, std::string host) {
    root_ = folder;
    host_ = std::move(host);
    served_.clear();
}

void ArtifactFileSchemeHandler::clear() {
    root_.reset();
    host_.clear();
    served_.clear();
}

std::string ArtifactFileSchemeHandler::urlFor(std::string_view host,
                                              const std::filesystem::path& fileName) {
    GCharPtr escaped{g_uri_escape_string(fileName.c_str(), nullptr, FALSE)};
    std::string url{artifactFileScheme};
    url.append("://").append(host).append("/").append(escaped.get());
    return url;
}

SchemeResult ArtifactFileSchemeHandler::resolve(std::string_view url) const {
    const auto parsed = SchemeRequestUrl::parse(url);
    if (!parsed)
        return SchemeError::badURL;
    if (!root_ || host_.empty() || parsed->host != host_)
        return SchemeError::fileDoesNotExist;

    std::filesystem::path relative;
    std::string_view rest{parsed->path};
    while (!rest.empty()) {
        const auto slash = rest.find('/');
        const auto component = rest.substr(0, slash);
        rest = slash == std::string_view::npos ? std::string_view{} : rest.substr(slash + 1);
        if (component == "..")
            return SchemeError::fileDoesNotExist;
        if (!component.empty() && component != ".")
            relative /= component;
    }
    if (relative.empty())
        return SchemeError::fileDoesNotExist;

    const auto realRoot = realPath(*root_);
    const auto file = realPath(*root_ / relative);
    if (!realRoot || !file || !isInside(*file, *realRoot))
        return SchemeError::fileDoesNotExist;
    struct stat info {};
    if (::stat(file->c_str(), &info) != 0 || !S_ISREG(info.st_mode))
        return SchemeError::fileDoesNotExist;
    auto bytes = readWholeFile(*file);
    if (!bytes)
        return SchemeError::fileDoesNotExist;
    served_.insert(*root_ / relative);
    return SchemeResponse{std::move(*bytes), mimeType(relative)};
}

std::string ArtifactFileSchemeHandler::mimeType(const std::filesystem::path& file) {
    static constexpr std::array<std::pair<std::string_view, std::string_view>, 30> known{{
        {"html", "text/html"},
        {"htm", "text/html"},
        {"xhtml", "application/xhtml+xml"},
        {"css", "text/css"},
        {"js", "text/javascript"},
        {"mjs", "text/javascript"},
        {"json", "application/json"},
        {"map", "application/json"},
        {"txt", "text/plain"},
        {"md", "text/plain"},
        {"csv", "text/csv"},
        {"xml", "application/xml"},
        {"svg", "image/svg+xml"},
        {"png", "image/png"},
        {"jpg", "image/jpeg"},
        {"jpeg", "image/jpeg"},
        {"gif", "image/gif"},
        {"webp", "image/webp"},
        {"avif", "image/avif"},
        {"ico", "image/x-icon"},
        {"woff", "font/woff"},
        {"woff2", "font/woff2"},
        {"ttf", "font/ttf"},
        {"otf", "font/otf"},
        {"wasm", "application/wasm"},
        {"mp3", "audio/mpeg"},
        {"wav", "audio/wav"},
        {"ogg", "audio/ogg"},
        {"mp4", "video/mp4"},
        {"webm", "video/webm"},
    }};
    std::string extension = file.extension().string();
    if (!extension.empty())
        extension.erase(0, 1);
    std::transform(extension.begin(), extension.end(), extension.begin(),
                   [](unsigned char c) { return static_cast<char>(g_ascii_tolower(c)); });
    for (const auto& [candidate, type] : known)
        if (candidate == extension)
            return std::string{type};

    GCharPtr contentType{g_content_type_guess(file.filename().c_str(), nullptr, 0, nullptr)};
    GCharPtr type{contentType ? g_content_type_get_mime_type(contentType.get()) : nullptr};
    return type ? type.get() : "application/octet-stream";
}

} // namespace kelmo
