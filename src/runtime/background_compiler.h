#pragma once

#include "runtime/compile_cache.h"
#include "runtime/handed_over_compile.h"
#include "runtime/resource_locator.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace kelmo {

// Compiles JSX and TSX sources into the compile cache in a helper process
// (kelmo-compile), with the same Babel bundle and compiler script as the player page.
// A first run of an artifact thus finds the module ready, and the page never loads
// Babel (the largest file by far) for code that compiles. A worker thread feeds the
// helper and waits for it.
//
// Jobs are keyed by their compile key; one runs at a time, and a source handed in
// while one runs is not compiled here (its page compiles it).
// Whoever waits for a key hears when its job ends, on the main loop, whether or not
// it compiled (a source that does not compile leaves nothing in the cache, and the
// page then compiles it itself to show the error).
class BackgroundCompiler {
public:
    BackgroundCompiler(ResourceLocator resources, std::shared_ptr<CompileCache> cache);

    // The process's one compiler for these resources and this cache folder, made on
    // first use and kept while someone holds it, so that a compile started ahead of a
    // load (at start-up, say) is the one that the load finds running.
    static std::shared_ptr<BackgroundCompiler> shared(const ResourceLocator& resources,
                                                      const std::filesystem::path& cacheFolder);

    const std::shared_ptr<CompileCache>& cache() const { return cache_; }

    // Reads a JSX or TSX file and starts compiling it, unless its module is kept
    // already; answers whether it is now compiling.
    bool compileAhead(const std::filesystem::path& file);

    // Starts compiling unless a job is running already; answers whether this key is
    // now compiling.
    bool compile(const std::string& key, std::string source);
    // Takes over a compile of that key begun before this process (by the launcher), as
    // a job like any other; answers whether this key is now compiling.
    bool adopt(const std::string& key, HandedOverCompile helper);
    bool isCompiling(const std::string& key) const;
    // Calls done on the main loop once the job of that key has ended; at once (still
    // from the main loop) when none is running.
    void whenDone(const std::string& key, std::function<void()> done);

private:
    struct State;
    static void finish(State& state, const std::string& key);
    // Runs work on a worker thread, keeps the module it makes under key, and ends the
    // job on the main loop.
    void runJob(const std::string& key, std::function<std::optional<std::string>()> work);

    ResourceLocator resources_;
    std::shared_ptr<CompileCache> cache_;
    std::shared_ptr<State> state_;
};

// The helper program that compiles a source in a process of its own:
// libexec/kelmo/kelmo-compile under the installation prefix.
std::filesystem::path compileHelperPath();

} // namespace kelmo
