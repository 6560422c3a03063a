// kelmo-compile BABEL SCRIPT: compiles the JSX or TSX source on standard input with
// the Babel bundle and the compiler script, and writes the module (JSON text) to
// standard output. Exits with 1, writing nothing, when anything fails.
//
// The application compiles ahead of its pages in this process of its own, so that
// the memory Babel leaves behind goes back to the system as soon as the compile ends.

#include "runtime/babel_context.h"

#include <cstdio>
#include <glib.h>
#include <iostream>
#include <iterator>
#include <optional>
#include <string>
#include <sys/resource.h>

namespace {

// No artifact takes Babel this long; a compile that does is ended by the system, and
// the artifact's page compiles it instead.
constexpr rlim_t processorSecondsAllowed = 60;

std::optional<std::string> contentsOf(const char* file) {
    gchar* contents = nullptr;
    gsize length = 0;
    if (!g_file_get_contents(file, &contents, &length, nullptr))
        return std::nullopt;
    std::string text{contents, length};
    g_free(contents);
    return text;
}

} // namespace

int main(int argc, char* argv[]) {
    if (argc != 3) {
        std::fputs("usage: kelmo-compile BABEL SCRIPT < SOURCE > MODULE\n", stderr);
        return 2;
    }
    const rlimit processorTime{processorSecondsAllowed, processorSecondsAllowed};
    setrlimit(RLIMIT_CPU, &processorTime);
    kelmo::keepJavaScriptToQuickTiers();
    const auto babel = contentsOf(argv[1]);
    const auto script = contentsOf(argv[2]);
    const std::string source{std::istreambuf_iterator<char>{std::cin},
                             std::istreambuf_iterator<char>{}};
    if (!babel || !script)
        return 1;
    const auto module = kelmo::compileInContext(*babel, *script, source);
    if (!module)
        return 1;
    std::fwrite(module->data(), 1, module->size(), stdout);
    return std::fflush(stdout) == 0 ? 0 : 1;
}
