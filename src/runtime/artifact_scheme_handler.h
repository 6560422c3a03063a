#pragma once

#include "runtime/resource_locator.h"

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace kelmo {

struct SchemeRequestUrl;

// The scheme that serves the player page and its runtime scripts.
inline constexpr std::string_view artifactScheme = "artifact";

// The placeholder in the page template that receives the artifact's code.
inline constexpr std::string_view artifactCodePlaceholder = "{{ARTIFACT_CODE_JSON}}";
// The placeholder that receives the artifact's earlier compiled module, or null.
inline constexpr std::string_view compiledArtifactPlaceholder = "{{COMPILED_ARTIFACT_JSON}}";
// The placeholder that receives the key under which the page hands over what it
// compiled, as a JSON string literal.
inline constexpr std::string_view compileKeyPlaceholder = "{{COMPILE_KEY_JSON}}";
// The placeholder that receives the artifact's file name (for messages), as a JSON
// string literal.
inline constexpr std::string_view artifactFileNamePlaceholder = "{{ARTIFACT_FILE_NAME_JSON}}";
// The placeholder that receives the names of the packages downloaded for artifacts.
inline constexpr std::string_view downloadedPackagesPlaceholder = "{{DOWNLOADED_PACKAGES_JSON}}";
// The placeholder that receives the Tailwind rules of an earlier run's first frame, or null.
inline constexpr std::string_view tailwindStylesPlaceholder = "{{TAILWIND_STYLES_JSON}}";
// The script that hands the page a module compiled on the side, asked for when none
// was embedded; its answer waits for a compile that is still running.
inline constexpr std::string_view compiledModuleResource = "kelmo-compiled-module.js";

// Why a scheme request could not be answered.
enum class SchemeError {
    badURL,           // the request carried no usable URL
    fileDoesNotExist, // nothing to serve at that URL
};

// A successful answer: the whole body and its MIME type (status 200).
struct SchemeResponse {
    std::string body;
    std::string mimeType;

    bool operator==(const SchemeResponse&) const = default;
};

using SchemeResult = std::variant<SchemeResponse, SchemeError>;
using HeaderFields = std::vector<std::pair<std::string, std::string>>;

// The header fields of an answer on the artifact scheme, exactly these three:
// "Content-Type" (the MIME type plus "; charset=utf-8", whatever the type),
// "Content-Length" and "Access-Control-Allow-Origin: *".
HeaderFields headerFields(const SchemeResponse& response);

// Answers requests on the "artifact" scheme while a JSX or TSX artifact runs: under
// "artifact://<host>/", the host naming the artifact's origin (originHostFor), the page
// template with the artifact's code embedded and the module compiled from it; under
// "artifact://<runtimeHost>/", the runtime files that every player page loads. All come
// from the application's top-level resource files, read afresh on every request. Free
// of WebKit; the web view host passes each request's URL in and hands the answer on.
class ArtifactSchemeHandler {
public:
    explicit ArtifactSchemeHandler(ResourceLocator resources = ResourceLocator::application());

    // The page URL under a host: "artifact://<host>/".
    static std::string pageUrl(std::string_view host);

    // The origin host of the artifact being run; nothing is served under any other, and
    // nothing at all while it is empty (no JSX or TSX artifact is being run).
    std::string host;
    // Whether the page of the current load is still to be served. It is served once, to
    // the load it was made for: a later request for it (from a frame, or another page
    // that learnt the URL) finds nothing.
    bool pageAwaited = false;

    // The full source of the JSX or TSX artifact to run; embedded in the next page request.
    std::string artifactCode;
    // Its file name as shown to the user, which messages about the code name.
    std::string artifactFileName;
    // Where packages downloaded for artifacts are kept (PackageFetcher): the page is told
    // their names, and their bundles are served beside the runtime's files.
    std::filesystem::path downloadedPackages;
    // What the page made of that code on an earlier run, when it is known; the page
    // then skips compiling.
    std::optional<std::string> compiledArtifact;
    // Sent back with a freshly compiled module, so that a late message from an
    // earlier page cannot be taken for this one's.
    std::string compileKey;
    // The Tailwind rules (CSS text) of the first frame of an earlier run of this code.
    std::optional<std::string> tailwindStyles;
    // Set while artifactCode compiles on the side: takes a callback for the end of that
    // compile (compiledArtifact then holds the module, if it compiled).
    std::function<void(std::function<void()>)> whenCompiled;

    // Whether the answer to this URL waits for the compile on the side: the compiled
    // module's script while a compile runs.
    bool answersLater(std::string_view url) const;

    // Routes by host and path (the query only tells the compiled module's key and the
    // icons wanted). Under the current host, an empty path or "/" is the page (while it
    // is awaited; serving it ends the wait) and kelmo-compiled-module.js the module;
    // under the runtime host, a path is the resource named by its last component. Any
    // other host or path, or any request while no artifact is run, does not exist.
    SchemeResult resolve(std::string_view url);

    // The page template (resource "runtime.html") with every code placeholder replaced
    // by the code as a JSON string literal, every compiled-module placeholder by the
    // compiled module as one (or null) and every key placeholder by the compile key as
    // one; "text/html".
    SchemeResult serveRuntime() const;

    // "window.kelmoCompiledArtifact = " and the module as a JSON string literal (null
    // when there is none); "application/javascript".
    static SchemeResponse compiledModuleScript(const std::optional<std::string>& module);

    // The top-level resource file of that name, typed by its extension.
    SchemeResult serveResource(std::string_view name) const;

    // The icons of lucide-icons.js that are exported under these names
    // ("lucide-icons.js?names=Heart,Star"), for an artifact that uses only those.
    SchemeResult serveDownloadedPackage(const std::string& name) const;
    SchemeResult serveIcons(const std::vector<std::string>& names) const;

    // The text as one JSON string literal that is safe inside a script element:
    // quotation mark, reverse solidus and solidus escaped with a reverse solidus,
    // control characters, "<", ">", "&", U+2028 and U+2029 as \u escapes, everything
    // else (non-ASCII included) as UTF-8. "\"\"" when the text is not valid UTF-8.
    static std::string escapeForHTMLScript(std::string_view text);

    // js, css and html have their types (case-insensitive); everything else is
    // "application/octet-stream".
    static std::string mimeType(std::string_view extension);

private:
    bool isCurrentHost(const SchemeRequestUrl& url) const;
    bool asksForThisCode(const SchemeRequestUrl& url) const;

    ResourceLocator resources_;
};

} // namespace kelmo
