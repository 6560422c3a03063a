#include "runtime/babel_context.h"

#include <jsc/jsc.h>

namespace kelmo {
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
    // Babel's bundle is one function of some 670,000 bytecodes, its module scope, which
    // runs once and long enough for the baseline compiler to take it up: 0.1 s of
    // processor time for code that has nearly finished by then. Babel's own functions
    // stay under a few thousand.
    jsc_options_set_string("bytecodeRangeToJITCompile", "0:100000");
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

} // namespace kelmo
