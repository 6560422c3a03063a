#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace kelmo {

// A JSX or TSX artifact compiled into the CommonJS module that the player page runs
// with its own require (imports resolved by the page's module table).
struct CompiledModule {
    std::string code;
    // The specifiers the code requires, each once, in the order they first appear.
    std::vector<std::string> imports;
    // The names the module exports, in the order of their declarations in the source.
    std::vector<std::string> exports;
    // The lucide-react icons it uses, when every use names one (`import { Heart }`);
    // nothing when it uses the package as a whole or does not import it.
    std::optional<std::vector<std::string>> icons;

    bool operator==(const CompiledModule&) const = default;
};

// Why a source did not compile: the compiler's first error and where it is.
struct CompileFailure {
    std::string message;
    int line = 0;   // 1-based; 0 when the compiler named no place
    int column = 0; // 1-based, in characters of that line

    bool operator==(const CompileFailure&) const = default;
};

// The compiler is missing or did not run to an answer (killed, crashed).
struct CompilerUnavailable {
    bool operator==(const CompilerUnavailable&) const = default;
};

using CompileOutcome = std::variant<CompiledModule, CompileFailure, CompilerUnavailable>;

// What the page is handed, as JSON text: {"code", "imports", "exports", "icons"?} for a module,
// {"error": {"message", "line", "column"}} for a failure; nothing when the compiler is
// unavailable, and the page then compiles for itself.
std::optional<std::string> pageJsonOf(const CompileOutcome& outcome);

// Reads the shape of a module that esbuild wrote in its CommonJS format.
CompiledModule moduleOf(std::string code);

// esbuild's diagnostics for a failed compile, turned into the first error with its
// place; esbuild counts columns in bytes from 0, the page in characters from 1.
std::optional<CompileFailure> failureOf(std::string_view diagnostics, std::string_view source);

// Compiles JSX and TSX sources with esbuild, a native program run once per compile:
// TypeScript stripped, JSX in React's automatic form, modern syntax left as the web
// engine runs it.
class ArtifactCompiler {
public:
    explicit ArtifactCompiler(std::optional<std::filesystem::path> esbuild = bundledEsbuild());

    // libexec/kelmo/esbuild under the installation prefix (the build tree mirrors it),
    // when it is there and executable.
    static std::optional<std::filesystem::path> bundledEsbuild();

    // The arguments after the program's name.
    static std::vector<std::string> arguments();

    bool isAvailable() const { return esbuild_.has_value(); }

    // A compile in flight; destroying it (or calling cancel) stops the compiler and
    // drops its answer.
    class Job {
    public:
        virtual ~Job() = default;
        virtual void cancel() = 0;
    };

    // Starts compiling and answers on the thread-default main context, never from
    // within this call.
    std::unique_ptr<Job> compile(std::string source,
                                 std::function<void(CompileOutcome)> done) const;

    // Compiles and waits for the answer (tools and benchmarks).
    CompileOutcome compileNow(std::string_view source) const;

private:
    std::optional<std::filesystem::path> esbuild_;
};

} // namespace kelmo
