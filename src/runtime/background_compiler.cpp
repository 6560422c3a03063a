#include "runtime/background_compiler.h"

#include "runtime/scheme_support.h"

#include <glib.h>
#include <glibmm/main.h>
#include <jsc/jsc.h>
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

bool evaluate(JSCContext* context, const std::string& script, const char* uri) {
    JSCValue* result = jsc_context_evaluate_with_source_uri(
        context, script.data(), static_cast<gssize>(script.size()), uri, 1);
    if (result)
        g_object_unref(result);
    return jsc_context_get_exception(context) == nullptr;
}

} // namespace

void keepJavaScriptToQuickTiers() {
    jsc_options_set_boolean(JSC_OPTIONS_USE_DFG, FALSE);
}

std::optional<std::string> compileInContext(const std::string& babel, const std::string& compiler,
                                            const std::string& source) {
    JSCContext* context = jsc_context_new();
    std::optional<std::string> module;
    if (evaluate(context, babel, "babel.min.js") &&
        evaluate(context, compiler, "artifact-compiler.js")) {
        GBytes* bytes = g_bytes_new_static(source.data(), source.size());
        JSCValue* text = jsc_value_new_string_from_bytes(context, bytes);
        g_bytes_unref(bytes);
        jsc_context_set_value(context, "kelmoSource", text);
        g_object_unref(text);
        JSCValue* result =
            jsc_context_evaluate(context, "JSON.stringify(kelmoTransform(kelmoSource))", -1);
        if (result && !jsc_context_get_exception(context) && jsc_value_is_string(result)) {
            gchar* json = jsc_value_to_string(result);
            module = json;
            g_free(json);
        }
        if (result)
            g_object_unref(result);
    }
    g_object_unref(context);
    return module;
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
    state_->running[key];

    std::weak_ptr<State> weakState = state_;
    std::thread{[weakState, key, source = std::move(source), babelFile = *babel,
                 compilerFile = *compiler, cache = cache_] {
        const auto babel = readWholeFile(babelFile);
        const auto compiler = readWholeFile(compilerFile);
        if (babel && compiler)
            if (const auto module = compileInContext(*babel, *compiler, source))
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
    return true;
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
