#include "runtime/artifact_scheme_handler.h"

#include "runtime/artifact_origin.h"
#include "runtime/icon_table.h"
#include "runtime/package_fetcher.h"
#include "runtime/scheme_support.h"

#include <algorithm>
#include <glib.h>
#include <initializer_list>
#include <numeric>
#include <utility>

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

std::string ArtifactSchemeHandler::pageUrl(std::string_view host) {
    std::string url{artifactScheme};
    url.append("://").append(host).append("/");
    return url;
}

SchemeResult ArtifactSchemeHandler::resolve(std::string_view url) {
    const auto parsed = SchemeRequestUrl::parse(url);
    if (!parsed)
        return SchemeError::badURL;
    if (host.empty())
        return SchemeError::fileDoesNotExist;
    const std::string name = parsed->lastPathComponent();
    if (parsed->host == runtimeHost) {
        if (const auto names = parsed->queryValue("names"); names && name == lucideIconsResource)
            return serveIcons(iconNamesOf(*names));
        if (name.starts_with("pkg~"))
            return serveDownloadedPackage(name);
        return name.empty() ? SchemeError::fileDoesNotExist : serveResource(name);
    }
    if (!isCurrentHost(*parsed))
        return SchemeError::fileDoesNotExist;
    if (parsed->path.empty() || parsed->path == "/") {
        if (!std::exchange(pageAwaited, false))
            return SchemeError::fileDoesNotExist;
        return serveRuntime();
    }
    if (name == compiledModuleResource)
        return compiledModuleScript(asksForThisCode(*parsed) ? compiledArtifact : std::nullopt);
    return SchemeError::fileDoesNotExist;
}

bool ArtifactSchemeHandler::answersLater(std::string_view url) const {
    if (!whenCompiled)
        return false;
    const auto parsed = SchemeRequestUrl::parse(url);
    return parsed && isCurrentHost(*parsed) &&
           parsed->lastPathComponent() == compiledModuleResource && asksForThisCode(*parsed);
}

bool ArtifactSchemeHandler::isCurrentHost(const SchemeRequestUrl& url) const {
    return !host.empty() && url.host == host;
}

// A request for the module carries the key of its page's code. One from an earlier
// page (held while a compile ran, and answered after the next page's load began) gets
// no module, and its page, if still there, compiles for itself.
bool ArtifactSchemeHandler::asksForThisCode(const SchemeRequestUrl& url) const {
    return !compileKey.empty() && url.queryValue("key") == compileKey;
}

SchemeResponse
ArtifactSchemeHandler::compiledModuleScript(const std::optional<std::string>& module) {
    return SchemeResponse{"window.kelmoCompiledArtifact = " +
                              (module ? escapeForHTMLScript(*module) : std::string{"null"}) + ";\n",
                          "application/javascript"};
}

namespace {

struct Fill {
    std::string_view placeholder;
    std::string_view replacement;
};

// The template with each placeholder replaced, in one pass, so that a replacement
// that happens to contain a placeholder's text stays as it is.
std::string fillTemplate(std::string_view text, std::initializer_list<Fill> fills) {
    std::string filled;
    filled.reserve(text.size() + std::accumulate(fills.begin(), fills.end(), std::size_t{0},
                                                 [](std::size_t sum, const Fill& fill) {
                                                     return sum + fill.replacement.size();
                                                 }));
    while (!text.empty()) {
        auto nearest = std::string_view::npos;
        const Fill* found = nullptr;
        for (const auto& fill : fills)
            if (const auto at = text.find(fill.placeholder); at < nearest) {
                nearest = at;
                found = &fill;
            }
        if (!found)
            break;
        filled.append(text.substr(0, nearest)).append(found->replacement);
        text.remove_prefix(nearest + found->placeholder.size());
    }
    filled.append(text);
    return filled;
}

} // namespace

SchemeResult ArtifactSchemeHandler::serveRuntime() const {
    const auto file = resources_.url("runtime", "html");
    if (!file)
        return SchemeError::fileDoesNotExist;
    auto page = readWholeFile(*file);
    if (!page || !isValidUtf8(*page))
        return SchemeError::fileDoesNotExist;

    const std::string code = escapeForHTMLScript(artifactCode);
    const std::string compiled =
        compiledArtifact ? escapeForHTMLScript(*compiledArtifact) : std::string{"null"};
    const std::string key = escapeForHTMLScript(compileKey);
    std::string packages = "[";
    if (!downloadedPackages.empty())
        for (const auto& name : PackageFetcher{downloadedPackages, {}}.downloaded())
            packages += (packages.size() > 1 ? "," : "") + escapeForHTMLScript(name);
    packages += "]";
    const std::string styles =
        tailwindStyles ? escapeForHTMLScript(*tailwindStyles) : std::string{"null"};
    return SchemeResponse{
        fillTemplate(*page, {{artifactCodePlaceholder, code},
                             {compiledArtifactPlaceholder, compiled},
                             {compileKeyPlaceholder, key},
                             {tailwindStylesPlaceholder, styles},
                             {artifactFileNamePlaceholder, escapeForHTMLScript(artifactFileName)},
                             {downloadedPackagesPlaceholder, packages}}),
        "text/html"};
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

SchemeResult ArtifactSchemeHandler::serveDownloadedPackage(const std::string& name) const {
    const bool known =
        !downloadedPackages.empty() &&
        std::ranges::any_of(PackageFetcher{downloadedPackages, {}}.downloaded(),
                            [&name](const std::string& package) {
                                return PackageFetcher::bundleFileName(package) == name;
                            });
    auto bytes = known ? readWholeFile(downloadedPackages / name) : std::nullopt;
    if (!bytes)
        return SchemeError::fileDoesNotExist;
    return SchemeResponse{std::move(*bytes), "text/javascript"};
}

SchemeResult ArtifactSchemeHandler::serveIcons(const std::vector<std::string>& names) const {
    auto table = serveResource(lucideIconsResource);
    if (auto* response = std::get_if<SchemeResponse>(&table))
        response->body = iconLinesNaming(response->body, names);
    return table;
}

std::string ArtifactSchemeHandler::escapeForHTMLScript(std::string_view text) {
    if (!isValidUtf8(text))
        return "\"\"";
    return jsonStringLiteral(text, JsonLiteralUse::scriptElement);
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
