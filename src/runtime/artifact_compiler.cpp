#include "runtime/artifact_compiler.h"

#include "runtime/artifact_scheme_handler.h"
#include "runtime/gobject_ref.h"
#include "runtime/resource_locator.h"

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdio>
#include <gio/gio.h>
#include <glib.h>
#include <mutex>
#include <unistd.h>
#include <utility>

namespace kelmo {

namespace {

// The file name the compiler gives the source in its messages and names after.
constexpr std::string_view sourceName = "artifact.tsx";

bool isIdentifierCharacter(char c) {
    return g_ascii_isalnum(c) || c == '_' || c == '$' || static_cast<unsigned char>(c) >= 0x80;
}

// The modules that the import statements became: esbuild writes each as a top-level
// line of its own, `var import_x = require("x");` (wrapped in `__toESM(…)` for
// default and namespace imports) or `__reExport(…, require("x"), …);`. Text elsewhere
// that merely looks like such a call, in a template string say, is not one.
std::vector<std::string> requiredSpecifiers(std::string_view code) {
    constexpr std::string_view call = "require(\"";
    std::vector<std::string> found;
    while (!code.empty()) {
        const auto end = code.find('\n');
        const auto line = code.substr(0, end);
        code.remove_prefix(end == std::string_view::npos ? code.size() : end + 1);
        if (!line.starts_with("var ") && !line.starts_with("__reExport("))
            continue;
        const auto at = line.find(call);
        if (at == std::string_view::npos || isIdentifierCharacter(line[at - 1]))
            continue;
        const auto start = at + call.size();
        const auto close = line.find("\")", start);
        if (close == std::string_view::npos)
            continue;
        const auto specifier = line.substr(start, close - start);
        if (specifier.empty() || specifier.find_first_of("\\\"") != std::string_view::npos)
            continue;
        if (std::find(found.begin(), found.end(), specifier) == found.end())
            found.emplace_back(specifier);
    }
    return found;
}

// Where the code declares that top-level name; npos when it does not.
std::size_t declarationOf(std::string_view code, std::string_view name) {
    static constexpr std::array<std::string_view, 6> keywords = {
        "function ", "function* ", "class ", "const ", "let ", "var "};
    auto nearest = std::string_view::npos;
    for (const auto keyword : keywords) {
        const std::string declaration = std::string{keyword} + std::string{name};
        for (auto at = code.find(declaration); at != std::string_view::npos;
             at = code.find(declaration, at + 1)) {
            const auto after = at + declaration.size();
            const bool wholeName = after >= code.size() || !isIdentifierCharacter(code[after]);
            const bool ownWord = at == 0 || !isIdentifierCharacter(code[at - 1]);
            if (wholeName && ownWord) {
                nearest = std::min(nearest, at);
                break;
            }
        }
    }
    return nearest;
}

std::string_view trimmed(std::string_view text) {
    while (!text.empty() && g_ascii_isspace(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && g_ascii_isspace(text.back()))
        text.remove_suffix(1);
    return text;
}

// The export names of esbuild's export table, `__export(x_exports, {\n  name: () => local,
// …\n});`, ordered by where their local bindings are declared, which is source order.
std::vector<std::string> exportedNames(std::string_view code) {
    const auto table = code.find("\n__export(");
    if (table == std::string_view::npos)
        return {};
    const auto open = code.find("{\n", table);
    const auto close = code.find("\n});", table);
    if (open == std::string_view::npos || close == std::string_view::npos || close < open)
        return {};

    std::vector<std::pair<std::size_t, std::string>> entries;
    std::string_view lines = code.substr(open + 2, close - open - 2);
    const auto body = code.substr(close);
    while (!lines.empty()) {
        const auto end = lines.find('\n');
        auto line = trimmed(lines.substr(0, end));
        lines.remove_prefix(end == std::string_view::npos ? lines.size() : end + 1);
        if (!line.empty() && line.back() == ',')
            line.remove_suffix(1);
        const auto arrow = line.find(": () => ");
        if (arrow == std::string_view::npos)
            continue;
        auto name = line.substr(0, arrow);
        if (name.size() >= 2 && name.front() == '"' && name.back() == '"')
            name = name.substr(1, name.size() - 2);
        auto local = line.substr(arrow + std::string_view{": () => "}.size());
        local = local.substr(0, local.find('.')); // a re-export: `import_x.Name`
        const auto at = declarationOf(body, local);
        entries.emplace_back(at == std::string_view::npos ? 0 : at, std::string{name});
    }
    std::stable_sort(entries.begin(), entries.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
    std::vector<std::string> names;
    for (auto& entry : entries)
        names.push_back(std::move(entry.second));
    return names;
}

// The lucide-react icons the code names: esbuild makes `import { Heart } from
// "lucide-react"` into `var import_lucide_react = require("lucide-react");` and each use
// into `import_lucide_react.Heart`. A namespace or default import, a re-export, a use
// by computed name or of the `icons` export needs every icon, and answers nothing.
std::optional<std::vector<std::string>> lucideIconsNamed(std::string_view code) {
    constexpr std::string_view call = "require(\"lucide-react\")";
    constexpr std::string_view binding = "import_lucide_react";
    const std::string statement =
        "\nvar " + std::string{binding} + " = " + std::string{call} + ";\n";
    const auto declared = code.find(statement);
    if (declared == std::string_view::npos)
        return std::nullopt;
    // Any other way in: the whole package.
    if (code.find(call) != declared + statement.size() - call.size() - 2 ||
        code.find(call, declared + statement.size()) != std::string_view::npos)
        return std::nullopt;

    std::vector<std::string> names;
    const auto after = declared + statement.size();
    for (auto at = code.find(binding, after); at != std::string_view::npos;
         at = code.find(binding, at + binding.size())) {
        if (isIdentifierCharacter(code[at - 1]))
            continue;
        auto rest = code.substr(at + binding.size());
        if (!rest.empty() && isIdentifierCharacter(rest.front()))
            continue; // a longer name that begins the same way
        if (rest.empty() || rest.front() != '.')
            return std::nullopt;
        rest.remove_prefix(1);
        std::size_t length = 0;
        while (length < rest.size() && isIdentifierCharacter(rest[length]))
            ++length;
        const auto name = rest.substr(0, length);
        if (name.empty() || name == "icons")
            return std::nullopt;
        if (std::find(names.begin(), names.end(), name) == names.end())
            names.emplace_back(name);
    }
    std::sort(names.begin(), names.end());
    return names;
}

// The 1-based character column of a 0-based byte offset into the given 1-based line.
int characterColumn(std::string_view source, int line, int byteColumn) {
    std::size_t start = 0;
    for (int number = 1; number < line; ++number) {
        const auto end = source.find_first_of("\r\n", start);
        if (end == std::string_view::npos)
            return byteColumn + 1;
        start = end + (source.compare(end, 2, "\r\n") == 0 ? 2 : 1);
    }
    auto text = source.substr(start, static_cast<std::size_t>(byteColumn));
    const char* valid = nullptr;
    g_utf8_validate(text.data(), static_cast<gssize>(text.size()), &valid);
    return static_cast<int>(g_utf8_strlen(text.data(), valid - text.data())) + 1;
}

std::string jsonStringArray(const std::vector<std::string>& items) {
    std::string json = "[";
    for (const auto& item : items) {
        if (json.size() > 1)
            json.push_back(',');
        json += ArtifactSchemeHandler::escapeForHTMLScript(item);
    }
    return json + "]";
}

std::vector<char*> argumentVector(const std::filesystem::path& program,
                                  const std::vector<std::string>& arguments) {
    std::vector<char*> argv{const_cast<char*>(program.c_str())};
    for (const auto& argument : arguments)
        argv.push_back(const_cast<char*>(argument.c_str()));
    argv.push_back(nullptr);
    return argv;
}

std::string_view viewOf(GBytes* bytes) {
    if (!bytes)
        return {};
    gsize size = 0;
    const auto* data = static_cast<const char*>(g_bytes_get_data(bytes, &size));
    return {data, size};
}

CompileOutcome outcomeOf(GSubprocess* process, GBytes* output, GBytes* diagnostics,
                         std::string_view source) {
    if (!g_subprocess_get_if_exited(process))
        return CompilerUnavailable{};
    if (g_subprocess_get_exit_status(process) == 0)
        return moduleOf(std::string{viewOf(output)});
    if (auto failure = failureOf(viewOf(diagnostics), source))
        return std::move(*failure);
    return CompilerUnavailable{};
}

GObjectRef<GSubprocess> spawn(const std::filesystem::path& esbuild) {
    // A compiler that dies before it has read the source must not take this process
    // with it: writing to its closed pipe then fails with EPIPE instead of a signal.
    static std::once_flag ignoringBrokenPipes;
    std::call_once(ignoringBrokenPipes, [] { std::signal(SIGPIPE, SIG_IGN); });
    const auto arguments = ArtifactCompiler::arguments();
    auto argv = argumentVector(esbuild, arguments);
    return GObjectRef<GSubprocess>::adopt(
        g_subprocess_newv(argv.data(),
                          static_cast<GSubprocessFlags>(G_SUBPROCESS_FLAGS_STDIN_PIPE |
                                                        G_SUBPROCESS_FLAGS_STDOUT_PIPE |
                                                        G_SUBPROCESS_FLAGS_STDERR_PIPE),
                          nullptr));
}

struct BytesDeleter {
    void operator()(GBytes* bytes) const {
        if (bytes)
            g_bytes_unref(bytes);
    }
};
using OwnedBytes = std::unique_ptr<GBytes, BytesDeleter>;

OwnedBytes bytesOf(const std::string& text) {
    return OwnedBytes{g_bytes_new(text.data(), text.size())};
}

// One compile in flight. The GIO callback holds a reference of its own, so the job can
// go away first; a cancelled job's answer is dropped.
class SubprocessJob : public ArtifactCompiler::Job {
public:
    struct State {
        std::string source;
        std::function<void(CompileOutcome)> done;
        GObjectRef<GSubprocess> process;
        GObjectRef<GCancellable> cancellable = GObjectRef<GCancellable>::adopt(g_cancellable_new());
        bool cancelled = false;
    };

    explicit SubprocessJob(std::shared_ptr<State> state) : state_{std::move(state)} {}
    ~SubprocessJob() override { cancel(); }

    void cancel() override {
        if (state_->cancelled)
            return;
        state_->cancelled = true;
        g_cancellable_cancel(state_->cancellable.get());
        if (state_->process)
            g_subprocess_force_exit(state_->process.get());
    }

    // Answers later from the main context, as a compile would.
    static void answerLater(std::shared_ptr<State> state, CompileOutcome outcome) {
        auto* pending = new std::pair<std::shared_ptr<State>, CompileOutcome>{std::move(state),
                                                                              std::move(outcome)};
        g_idle_add_full(
            G_PRIORITY_DEFAULT,
            [](gpointer data) {
                auto* answer =
                    static_cast<std::pair<std::shared_ptr<State>, CompileOutcome>*>(data);
                if (!answer->first->cancelled)
                    answer->first->done(std::move(answer->second));
                return G_SOURCE_REMOVE;
            },
            pending,
            [](gpointer data) {
                delete static_cast<std::pair<std::shared_ptr<State>, CompileOutcome>*>(data);
            });
    }

    static void communicated(GObject* source, GAsyncResult* result, gpointer data) {
        std::unique_ptr<std::shared_ptr<State>> held{static_cast<std::shared_ptr<State>*>(data)};
        State& state = **held;
        GBytes* output = nullptr;
        GBytes* diagnostics = nullptr;
        const bool finished = g_subprocess_communicate_finish(G_SUBPROCESS(source), result, &output,
                                                              &diagnostics, nullptr);
        OwnedBytes ownedOutput{output};
        OwnedBytes ownedDiagnostics{diagnostics};
        if (state.cancelled)
            return;
        if (!finished) {
            state.done(CompilerUnavailable{});
            return;
        }
        // The pipes are closed, so the process has ended or is about to: wait for its status.
        g_subprocess_wait(G_SUBPROCESS(source), nullptr, nullptr);
        state.done(outcomeOf(G_SUBPROCESS(source), output, diagnostics, state.source));
    }

private:
    std::shared_ptr<State> state_;
};

// esbuild's helper for default and namespace imports copies a module's own properties
// into a fresh object. The page's modules are ES namespaces already (marked
// __esModule), some of them answering names they cannot list (icons made on first
// use, placeholders for unknown ones); they are used as they are, as Babel's interop
// did. Anything else still goes through esbuild's helper. Written on the helper's own
// line, so that the module's line numbers stay as esbuild gave them.
void keepNamespacesAsTheyAre(std::string& code) {
    constexpr std::string_view helper = "\nvar __toESM = (";
    const auto at = code.find(helper);
    if (at == std::string::npos)
        return;
    code.replace(at, helper.size(),
                 "\nvar __toESM = (mod, isNodeMode) => mod != null && mod.__esModule ? mod : "
                 "__esbuildToESM(mod, isNodeMode), __esbuildToESM = (");
}

} // namespace

std::optional<std::string> pageJsonOf(const CompileOutcome& outcome) {
    if (const auto* module = std::get_if<CompiledModule>(&outcome))
        return "{\"code\":" + ArtifactSchemeHandler::escapeForHTMLScript(module->code) +
               ",\"imports\":" + jsonStringArray(module->imports) +
               ",\"exports\":" + jsonStringArray(module->exports) +
               (module->icons ? ",\"icons\":" + jsonStringArray(*module->icons) : std::string{}) +
               "}";
    if (const auto* failure = std::get_if<CompileFailure>(&outcome))
        return "{\"error\":{\"message\":" +
               ArtifactSchemeHandler::escapeForHTMLScript(failure->message) +
               ",\"line\":" + std::to_string(failure->line) +
               ",\"column\":" + std::to_string(failure->column) + "}}";
    return std::nullopt;
}

CompiledModule moduleOf(std::string code) {
    keepNamespacesAsTheyAre(code);
    CompiledModule module;
    module.imports = requiredSpecifiers(code);
    module.exports = exportedNames(code);
    module.icons = lucideIconsNamed(code);
    module.code = std::move(code);
    return module;
}

// esbuild writes each error as "✘ [ERROR] message", and below it the place as
// "    artifact.tsx:line:column:".
std::optional<CompileFailure> failureOf(std::string_view diagnostics, std::string_view source) {
    constexpr std::string_view errorMark = "[ERROR] ";
    const auto mark = diagnostics.find(errorMark);
    if (mark == std::string_view::npos)
        return std::nullopt;
    auto rest = diagnostics.substr(mark + errorMark.size());
    CompileFailure failure;
    failure.message = std::string{trimmed(rest.substr(0, rest.find('\n')))};

    const std::string placeMark = std::string{sourceName} + ":";
    const auto next = rest.find(errorMark);
    const auto place = rest.substr(0, next).find(placeMark);
    if (place == std::string_view::npos)
        return failure;
    const auto numbers = rest.substr(place + placeMark.size());
    int line = 0;
    int byteColumn = 0;
    if (std::sscanf(std::string{numbers.substr(0, numbers.find('\n'))}.c_str(), "%d:%d:", &line,
                    &byteColumn) == 2 &&
        line > 0 && byteColumn >= 0) {
        failure.line = line;
        failure.column = characterColumn(source, line, byteColumn);
    }
    return failure;
}

ArtifactCompiler::ArtifactCompiler(std::optional<std::filesystem::path> esbuild)
    : esbuild_{std::move(esbuild)} {}

std::optional<std::filesystem::path> ArtifactCompiler::bundledEsbuild() {
    auto program = installationPrefix() / KELMO_INSTALL_LIBEXECDIR / "kelmo" / "esbuild";
    if (::access(program.c_str(), X_OK) != 0)
        return std::nullopt;
    return program;
}

std::vector<std::string> ArtifactCompiler::arguments() {
    return {"--loader=tsx", "--format=cjs", "--jsx=automatic",
            // WebKitGTK 2.4x and later run what Safari 18 runs.
            "--target=safari18", "--charset=utf8", "--sourcefile=" + std::string{sourceName},
            "--color=false", "--log-level=error"};
}

std::unique_ptr<ArtifactCompiler::Job>
ArtifactCompiler::compile(std::string source, std::function<void(CompileOutcome)> done) const {
    auto state = std::make_shared<SubprocessJob::State>();
    state->source = std::move(source);
    state->done = std::move(done);
    auto job = std::make_unique<SubprocessJob>(state);
    if (esbuild_)
        state->process = spawn(*esbuild_);
    if (!state->process) {
        SubprocessJob::answerLater(state, CompilerUnavailable{});
        return job;
    }
    auto input = bytesOf(state->source);
    g_subprocess_communicate_async(state->process.get(), input.get(), state->cancellable.get(),
                                   &SubprocessJob::communicated,
                                   new std::shared_ptr<SubprocessJob::State>{state});
    return job;
}

CompileOutcome ArtifactCompiler::compileNow(std::string_view source) const {
    if (!esbuild_)
        return CompilerUnavailable{};
    auto process = spawn(*esbuild_);
    if (!process)
        return CompilerUnavailable{};
    auto input = bytesOf(std::string{source});
    GBytes* output = nullptr;
    GBytes* diagnostics = nullptr;
    const bool finished = g_subprocess_communicate(process.get(), input.get(), nullptr, &output,
                                                   &diagnostics, nullptr);
    OwnedBytes ownedOutput{output};
    OwnedBytes ownedDiagnostics{diagnostics};
    if (!finished || !g_subprocess_wait(process.get(), nullptr, nullptr))
        return CompilerUnavailable{};
    return outcomeOf(process.get(), output, diagnostics, source);
}

} // namespace kelmo
