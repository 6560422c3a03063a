#include "runtime/artifact_scheme_handler.h"

#include "runtime/scheme_support.h"

#include <algorithm>
#include <glib.h>

namespace kelmo {

HeaderFields headerFields(const SchemeResponse& response) {
    return {
        {"Content-Type", response.mimeType + "; charset=utf-8"},
        {"Content-Length", std::to_string(response.body.size())},
        {"Access-Control-Allow-Origin", "*"},
    };
}

ArtifactSchemeHandler::ArtifactSchemeHandler(ResourceLocator resources)
    : resources_{std::move(resources)} {}

SchemeResult ArtifactSchemeHandler::resolve(std::string_view url) const {
    const auto parsed = SchemeRequestUrl::parse(url);
    if (!parsed)
        return SchemeError::badURL;
    if (parsed->host != artifactPlayerHost)
        return SchemeError::fileDoesNotExist;
    if (parsed->path.empty() || parsed->path == "/")
        return serveRuntime();
    return serveResource(parsed->lastPathComponent());
}

SchemeResult ArtifactSchemeHandler::serveRuntime() const {
    const auto file = resources_.url("runtime", "html");
    if (!file)
        return SchemeError::fileDoesNotExist;
    auto page = readWholeFile(*file);
    if (!page || !isValidUtf8(*page))
        return SchemeError::fileDoesNotExist;

    const std::string code = escapeForHTMLScript(artifactCode);
    std::string filled;
    filled.reserve(page->size() + code.size());
    std::string_view rest{*page};
    for (auto at = rest.find(artifactCodePlaceholder); at != std::string_view::npos;
         at = rest.find(artifactCodePlaceholder)) {
        filled.append(rest.substr(0, at)).append(code);
        rest.remove_prefix(at + artifactCodePlaceholder.size());
    }
    filled.append(rest);
    return SchemeResponse{std::move(filled), "text/html"};
}

SchemeResult ArtifactSchemeHandler::serveResource(std::string_view name) const {
    const auto dot = name.rfind('.');
    const auto baseName = name.substr(0, dot);
    const auto extension =
        dot == std::string_view::npos ? std::string_view{} : name.substr(dot + 1);
    const auto file = resources_.url(baseName, extension);
    if (!file)
        return SchemeError::fileDoesNotExist;
    auto bytes = readWholeFile(*file);
    if (!bytes)
        return SchemeError::fileDoesNotExist;
    return SchemeResponse{std::move(*bytes), mimeType(extension)};
}

std::string ArtifactSchemeHandler::escapeForHTMLScript(std::string_view text) {
    if (!isValidUtf8(text))
        return "\"\"";
    static constexpr char hex[] = "0123456789abcdef";
    std::string literal;
    literal.reserve(text.size() + 2);
    literal.push_back('"');
    for (const char c : text) {
        switch (c) {
        case '"':
            literal.append("\\\"");
            break;
        case '\\':
            literal.append("\\\\");
            break;
        case '/':
            literal.append("\\/");
            break;
        case '\b':
            literal.append("\\b");
            break;
        case '\f':
            literal.append("\\f");
            break;
        case '\n':
            literal.append("\\n");
            break;
        case '\r':
            literal.append("\\r");
            break;
        case '\t':
            literal.append("\\t");
            break;
        default:
            if (static_cast<unsigned char>(c) < 0x20) {
                const auto byte = static_cast<unsigned char>(c);
                literal.append("\\u00").push_back(hex[byte >> 4]);
                literal.push_back(hex[byte & 0xf]);
            } else {
                literal.push_back(c);
            }
        }
    }
    literal.push_back('"');
    return literal;
}

std::string ArtifactSchemeHandler::mimeType(std::string_view extension) {
    std::string lower{extension};
    std::transform(lower.begin(), lower.end(), lower.begin(),
                   [](unsigned char c) { return static_cast<char>(g_ascii_tolower(c)); });
    if (lower == "js")
        return "application/javascript";
    if (lower == "css")
        return "text/css";
    if (lower == "html")
        return "text/html";
    return "application/octet-stream";
}

} // namespace kelmo
