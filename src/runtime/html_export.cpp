#include "runtime/html_export.h"

#include "model/artifact.h"
#include "runtime/artifact_scheme_handler.h"
#include "runtime/icon_table.h"
#include "runtime/package_fetcher.h"
#include "runtime/scheme_support.h"
#include "runtime/source_file.h"

#include <glibmm/main.h>
#include <jsc/jsc.h>
#include <memory>
#include <sstream>
#include <thread>

namespace kelmo {
namespace {

std::string json(std::string_view text) {
    return ArtifactSchemeHandler::escapeForHTMLScript(text);
}

std::string jsonArray(const std::vector<std::string>& items) {
    std::string array = "[";
    for (const auto& item : items)
        array += (array.size() > 1 ? "," : "") + json(item);
    return array + "]";
}

// Inline text may not close its own element early.
std::string safeInside(std::string text, std::string_view element) {
    const std::string closing = "</" + std::string{element};
    for (std::size_t at = 0; (at = text.find(closing, at)) != std::string::npos; at += 2)
        text.replace(at, 2, "<\\/");
    return text;
}

std::vector<std::string> linesOf(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream stream{text};
    for (std::string line; std::getline(stream, line);)
        if (!line.empty())
            lines.push_back(line);
    return lines;
}

// The files that answer the imports, in the order the page loads them, found by
// running the page's own module table in a JavaScript context of its own; or the
// first import it cannot answer, with its message.
struct ResolvedImports {
    std::vector<std::string> files;
    std::vector<std::string> stylesheets;
    std::string unresolved;
};

std::optional<ResolvedImports> resolveImports(const std::string& moduleTable,
                                              const std::vector<std::string>& imports,
                                              const std::vector<std::string>& downloaded,
                                              std::string& problem) {
    std::unique_ptr<JSCContext, decltype(&g_object_unref)> context{jsc_context_new(),
                                                                   g_object_unref};
    const std::string prelude =
        "var window = globalThis;"
        // The table only takes the folder of its own address.
        "var URL = function (relative, base) { this.href = String(base).replace(/[^/]*$/, ''); };"
        "var location = { href: 'artifact://runtime.artifacts.kelmo/' };"
        "var document = { currentScript: { src: location.href + 'runtime-modules.js' } };"
        "window.kelmoDownloadedPackages = " +
        jsonArray(downloaded) + ";";
    const std::string query =
        "(function (imports) {"
        "  const files = [], stylesheets = [];"
        "  for (const specifier of imports) {"
        "    const entry = kelmoModuleTable.resolve(specifier);"
        "    if (!entry) {"
        "      const parts = specifier.split('/');"
        "      const name = specifier.startsWith('@') ? parts.slice(0, 2).join('/') : parts[0];"
        "      const near = kelmoModuleTable.nearest(specifier, name);"
        "      return 'unresolved\\n' + specifier + (near ? '\\n' + near : '');"
        "    }"
        "    if (/\\.(?:css|scss|sass|less)(?:\\?.*)?$/i.test(specifier))"
        "      stylesheets.push('css~' + specifier.replace(/\\?.*$/, '').split('/').join('~'));"
        "    for (const file of entry.files)"
        "      if (!files.includes(file)) files.push(file);"
        "  }"
        "  return ['files', ...files, '', ...stylesheets].join('\\n');"
        "})(" +
        jsonArray(imports) + ")";
    g_autoptr(JSCValue) answer = nullptr;
    for (const auto& [code, name] :
         {std::pair{prelude, "prelude.js"}, std::pair{moduleTable, "runtime-modules.js"},
          std::pair{query, "query.js"}}) {
        g_clear_object(&answer);
        answer = jsc_context_evaluate_with_source_uri(context.get(), code.c_str(),
                                                      static_cast<gssize>(code.size()), name, 1);
        if (JSCException* exception = jsc_context_get_exception(context.get())) {
            g_autofree char* report = jsc_exception_report(exception);
            problem = std::string{"The module table did not run: "} + (report ? report : "");
            return std::nullopt;
        }
    }
    g_autofree char* text = jsc_value_to_string(answer);
    const std::string reply = text ? text : "";
    ResolvedImports resolved;
    if (reply.rfind("unresolved\n", 0) == 0) {
        const auto lines = linesOf(reply.substr(11));
        resolved.unresolved =
            "Cannot resolve import \u201c" + lines.at(0) + "\u201d: Kelmo does not have it." +
            (lines.size() > 1 ? " Did you mean \u201c" + lines[1] + "\u201d?" : "");
        return resolved;
    }
    const auto blank = reply.find("\n\n");
    resolved.files =
        linesOf(reply.substr(6, blank == std::string::npos ? std::string::npos : blank - 6));
    if (blank != std::string::npos)
        resolved.stylesheets = linesOf(reply.substr(blank + 2));
    return resolved;
}

} // namespace

HtmlExport::HtmlExport(ResourceLocator resources, std::filesystem::path downloadedPackages,
                       std::vector<std::string> downloaded)
    : resources_{std::move(resources)}, downloadedPackages_{std::move(downloadedPackages)},
      downloaded_{std::move(downloaded)} {}

HtmlExportResult HtmlExport::page(const std::string& source, const CompiledModule& module,
                                  const std::string& fileName) const {
    const auto read = [&](const std::string& file) -> std::optional<std::string> {
        if (file.rfind("pkg~", 0) == 0)
            return readWholeFile(downloadedPackages_ / file);
        const auto found = resources_.url(file, "");
        return found ? readWholeFile(*found) : std::nullopt;
    };
    const auto moduleTable = read("runtime-modules.js");
    if (!moduleTable)
        return HtmlExportFailure{"Kelmo's runtime files are missing (runtime-modules.js)"};
    std::string problem;
    auto imports = module.imports;
    imports.insert(imports.begin(), "react-dom/client"); // the page renders with it
    // On a thread of its own: a JavaScript context on the main thread would share
    // JavaScriptCore's state with the web views of the process.
    std::optional<ResolvedImports> resolved;
    std::thread{[&] {
        resolved = resolveImports(*moduleTable, imports, downloaded_, problem);
    }}.join();
    if (!resolved)
        return HtmlExportFailure{problem};
    if (!resolved->unresolved.empty())
        return HtmlExportFailure{resolved->unresolved};

    std::vector<std::string> scripts = resolved->files;
    scripts.push_back("kelmo-tailwind.js");
    std::string embedded;
    std::vector<std::string> names;
    for (const auto& file : scripts) {
        auto text = read(file);
        if (!text)
            return HtmlExportFailure{"Kelmo's runtime file " + file + " is missing"};
        if (file == lucideIconsResource && module.icons)
            text = iconLinesNaming(*text, *module.icons);
        embedded += "<script>" + safeInside(std::move(*text), "script") + "</script>\n";
        names.push_back(file);
    }
    std::string styles;
    for (const auto& file : resolved->stylesheets) {
        // A stylesheet Kelmo lacks is left out, as the player ignores it.
        if (const auto text = read(file)) {
            styles += "<style>" + safeInside(*text, "style") + "</style>\n";
            names.push_back(file);
        }
    }
    const auto runtimeCss = read("runtime.css");
    const auto runtime = read("runtime.js");
    if (!runtimeCss || !runtime)
        return HtmlExportFailure{"Kelmo's runtime files are missing (runtime.js)"};

    const auto compiled = pageJsonOf(CompileOutcome{module});
    std::string page;
    page += "<!doctype html>\n<html lang=\"en\" data-kelmo-state=\"loading\">\n<head>\n"
            "<meta charset=\"utf-8\">\n"
            "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n";
    page += "<title>" + safeInside(Artifact::make(fileName, {}).name, "title") + "</title>\n";
    page += "<meta name=\"generator\" content=\"Kelmo " KELMO_VERSION "\">\n";
    page += "<style>" + safeInside(*runtimeCss, "style") + "</style>\n" + styles;
    page +=
        "<script>\n"
        "window.kelmoArtifactCode = " +
        json(source) + ";\nwindow.kelmoCompiledArtifact = " + json(*compiled) +
        ";\nwindow.kelmoCompileKey = null;\nwindow.kelmoArtifactFileName = " + json(fileName) +
        ";\nwindow.kelmoDownloadedPackages = " + jsonArray(downloaded_) +
        ";\nwindow.kelmoTailwindStyles = null;\nwindow.kelmoEmbeddedFiles = " + jsonArray(names) +
        ";\n</script>\n";
    // The libraries first: the player's script starts the artifact as soon as it runs.
    page += embedded;
    page += "<script>" + safeInside(*runtime, "script") + "</script>\n";
    page += "<script>" + safeInside(*moduleTable, "script") + "</script>\n";
    page += "</head>\n<body>\n<div id=\"root\"></div>\n</body>\n</html>\n";
    return page;
}

namespace {

// The source of a JSX or TSX file, or why it cannot be exported.
std::variant<std::string, HtmlExportFailure> exportableSource(const std::filesystem::path& source) {
    const auto kind = detectType(source.string()).kind;
    if (kind != ArtifactType::Kind::jsx && kind != ArtifactType::Kind::tsx)
        return HtmlExportFailure{source.string() + " is a web page already"};
    auto file = SourceFile::read(source, SourceFile::largestSource);
    if (!file.code)
        return HtmlExportFailure{"Could not read " + source.string()};
    return std::move(*file.code);
}

HtmlExportResult pageFor(const std::string& code, const CompileOutcome& outcome,
                         const std::filesystem::path& source) {
    if (const auto* failure = std::get_if<CompileFailure>(&outcome))
        return HtmlExportFailure{"Compile error: " + failure->message + " (line " +
                                 std::to_string(failure->line) + ", column " +
                                 std::to_string(failure->column) + ")"};
    const auto* module = std::get_if<CompiledModule>(&outcome);
    if (!module)
        return HtmlExportFailure{"Kelmo's compiler (esbuild) did not run"};
    PackageFetcher fetcher{PackageFetcher::defaultFolder(), std::nullopt};
    HtmlExport exporter{ResourceLocator::application(), fetcher.folder(), fetcher.downloaded()};
    return exporter.page(code, *module, source.filename().string());
}

} // namespace

HtmlExportResult HtmlExport::exportFile(const std::filesystem::path& source) {
    auto code = exportableSource(source);
    if (auto* failure = std::get_if<HtmlExportFailure>(&code))
        return std::move(*failure);
    const auto& text = std::get<std::string>(code);
    return pageFor(text, ArtifactCompiler{}.compileNow(text), source);
}

std::unique_ptr<ArtifactCompiler::Job>
HtmlExport::exportFileLater(const std::filesystem::path& source,
                            std::function<void(HtmlExportResult)> done) {
    auto code = exportableSource(source);
    if (auto* failure = std::get_if<HtmlExportFailure>(&code)) {
        Glib::signal_idle().connect_once(
            [done = std::move(done), failure = std::move(*failure)] { done(failure); });
        return nullptr;
    }
    auto text = std::get<std::string>(std::move(code));
    return ArtifactCompiler{}.compile(
        text, [text, source, done = std::move(done)](CompileOutcome outcome) {
            done(pageFor(text, outcome, source));
        });
}

} // namespace kelmo
