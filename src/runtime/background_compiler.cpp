#include "runtime/background_compiler.h"

#include "runtime/gobject_ref.h"
#include "runtime/scheme_support.h"

#include <gio/gio.h>
#include <glibmm/main.h>
#include <map>
#include <thread>
#include <vector>

namespace kelmo {

// Used on the main thread only; workers hold a weak reference and come back through
// the main loop.
struct BackgroundCompiler::State {
    std::map<std::string, std::vector<std::function<void()>>> running;
};

namespace {

// Runs the compile helper over the source: the module as JSON text, or nothing when
// the helper is missing or the source does not compile.
std::optional<std::string> compileInHelper(const std::filesystem::path& helper,
                                           const std::filesystem::path& babel,
                                           const std::filesystem::path& script,
                                           const std::string& source) {
    const auto process = GObjectRef<GSubprocess>::adopt(
        g_subprocess_new(static_cast<GSubprocessFlags>(G_SUBPROCESS_FLAGS_STDIN_PIPE |
                                                       G_SUBPROCESS_FLAGS_STDOUT_PIPE),
                         nullptr, helper.c_str(), babel.c_str(), script.c_str(), nullptr));
    if (!process)
        return std::nullopt;
    GBytes* input = g_bytes_new_static(source.data(), source.size());
    GBytes* output = nullptr;
    const bool communicated =
        g_subprocess_communicate(process.get(), input, nullptr, &output, nullptr, nullptr);
    g_bytes_unref(input);
    std::optional<std::string> module;
    if (communicated && output && g_subprocess_get_successful(process.get())) {
        gsize size = 0;
        const auto* data = static_cast<const char*>(g_bytes_get_data(output, &size));
        module.emplace(data, size);
    }
    if (output)
        g_bytes_unref(output);
    return module;
}

} // namespace

std::filesystem::path compileHelperPath() {
    return installationPrefix() / "libexec" / "kelmo" / "kelmo-compile";
}

BackgroundCompiler::BackgroundCompiler(ResourceLocator resources,
                                       std::shared_ptr<CompileCache> cache)
    : resources_{std::move(resources)}, cache_{std::move(cache)}, state_{
                                                                      std::make_shared<State>()} {}

std::shared_ptr<BackgroundCompiler>
BackgroundCompiler::shared(const ResourceLocator& resources,
                           const std::filesystem::path& cacheFolder) {
    static std::map<std::pair<std::filesystem::path, std::filesystem::path>,
                    std::weak_ptr<BackgroundCompiler>>
        compilers;
    auto& slot = compilers[{resources.directory(), cacheFolder}];
    if (auto compiler = slot.lock())
        return compiler;
    auto cache =
        std::make_shared<CompileCache>(cacheFolder, CompileCache::fingerprintOf(resources));
    auto compiler = std::make_shared<BackgroundCompiler>(resources, std::move(cache));
    slot = compiler;
    return compiler;
}

bool BackgroundCompiler::compileAhead(const std::filesystem::path& file) {
    auto source = readWholeFile(file);
    if (!source || !isValidUtf8(*source))
        return false;
    const std::string key = cache_->keyFor(*source);
    if (cache_->lookup(key))
        return false;
    return compile(key, std::move(*source));
}

bool BackgroundCompiler::isCompiling(const std::string& key) const {
    return state_->running.count(key) != 0;
}

bool BackgroundCompiler::compile(const std::string& key, std::string source) {
    // One job at a time: each holds a JavaScript context with Babel loaded, and
    // someone clicking through many new artifacts must not start one per click.
    // A source that finds the compiler busy is compiled by its page instead.
    if (!state_->running.empty())
        return isCompiling(key);
    const auto babel = resources_.url("babel.min", "js");
    const auto compiler = resources_.url("artifact-compiler", "js");
    if (!babel || !compiler)
        return false;
    runJob(key, [source = std::move(source), babelFile = *babel, compilerFile = *compiler] {
        return compileInHelper(compileHelperPath(), babelFile, compilerFile, source);
    });
    return true;
}

bool BackgroundCompiler::adopt(const std::string& key, HandedOverCompile helper) {
    if (!state_->running.empty())
        return isCompiling(key);
    auto shared = std::make_shared<HandedOverCompile>(std::move(helper));
    runJob(key, [shared] { return shared->readModule(); });
    return true;
}

void BackgroundCompiler::runJob(const std::string& key,
                                std::function<std::optional<std::string>()> work) {
    state_->running[key];
    std::weak_ptr<State> weakState = state_;
    std::thread{[weakState, key, work = std::move(work), cache = cache_] {
        if (const auto module = work())
            cache->store(key, *module);
        // Back on the main loop, unless the compiler has gone in the meantime.
        auto* done = new std::function<void()>{[weakState, key] {
            if (const auto state = weakState.lock())
                finish(*state, key);
        }};
        g_idle_add_full(
            G_PRIORITY_DEFAULT,
            [](gpointer data) {
                (*static_cast<std::function<void()>*>(data))();
                return G_SOURCE_REMOVE;
            },
            done, [](gpointer data) { delete static_cast<std::function<void()>*>(data); });
    }}.detach();
}

void BackgroundCompiler::whenDone(const std::string& key, std::function<void()> done) {
    const auto found = state_->running.find(key);
    if (found == state_->running.end()) {
        Glib::signal_idle().connect_once(std::move(done), Glib::PRIORITY_DEFAULT);
        return;
    }
    found->second.push_back(std::move(done));
}

void BackgroundCompiler::finish(State& state, const std::string& key) {
    const auto found = state.running.find(key);
    if (found == state.running.end())
        return;
    auto waiting = std::move(found->second);
    state.running.erase(found);
    for (auto& done : waiting)
        done();
}

} // namespace kelmo
