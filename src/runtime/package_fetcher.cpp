#include "runtime/package_fetcher.h"

#include "runtime/gobject_ref.h"

#include <algorithm>
#include <fstream>
#include <gio/gio.h>
#include <regex>
#include <thread>

namespace kelmo {
namespace {

bool writeText(const std::filesystem::path& file, const std::string& text) {
    std::error_code ignored;
    std::filesystem::create_directories(file.parent_path(), ignored);
    std::ofstream out{file, std::ios::binary | std::ios::trunc};
    out << text;
    return static_cast<bool>(out);
}

struct Run {
    bool exited = false;
    int status = -1;
    std::string errors;
};

// Runs a program to its end, in the folder given, and answers how it ended.
Run runProgram(const std::vector<std::string>& arguments, const std::filesystem::path& folder) {
    std::vector<const char*> argv;
    for (const auto& argument : arguments)
        argv.push_back(argument.c_str());
    argv.push_back(nullptr);
    auto launcher = GObjectRef<GSubprocessLauncher>::adopt(
        g_subprocess_launcher_new(static_cast<GSubprocessFlags>(G_SUBPROCESS_FLAGS_STDOUT_SILENCE |
                                                                G_SUBPROCESS_FLAGS_STDERR_PIPE)));
    g_subprocess_launcher_set_cwd(launcher.get(), folder.c_str());
    Run run;
    GError* error = nullptr;
    auto process = GObjectRef<GSubprocess>::adopt(
        g_subprocess_launcher_spawnv(launcher.get(), argv.data(), &error));
    if (!process) {
        run.errors = error ? error->message : "";
        g_clear_error(&error);
        return run;
    }
    gchar* errors = nullptr;
    g_subprocess_communicate_utf8(process.get(), nullptr, nullptr, nullptr, &errors, nullptr);
    run.errors = errors ? errors : "";
    g_free(errors);
    run.exited = g_subprocess_get_if_exited(process.get());
    run.status = run.exited ? g_subprocess_get_exit_status(process.get()) : -1;
    return run;
}

// npm's failure in words for the user.
std::string npmFailure(const std::string& name, const std::string& errors) {
    const auto has = [&errors](const char* text) { return errors.find(text) != std::string::npos; };
    if (has("E404") || has("404 Not Found"))
        return "The package \"" + name + "\" does not exist on npm.";
    if (has("ENOTFOUND") || has("EAI_AGAIN") || has("ECONNREFUSED") || has("ETIMEDOUT") ||
        has("ENETUNREACH") || has("network"))
        return "Kelmo could not reach the npm registry. Check that your computer is online.";
    return "npm could not install \"" + name + "\".";
}

// The page's one React stands in for the react and react-dom packages, whatever npm
// installed for them.
void writePageReact(const std::filesystem::path& modules) {
    std::error_code ignored;
    std::filesystem::remove_all(modules / "react", ignored);
    std::filesystem::remove_all(modules / "react-dom", ignored);
    const std::string jsxRuntime =
        "const React = window.React;\n"
        "function jsx(type, props, key) {\n"
        "  return React.createElement(type, key === undefined ? props : Object.assign({}, props, "
        "{ key }));\n}\n"
        "module.exports = { jsx, jsxs: jsx, jsxDEV: jsx, Fragment: React.Fragment };\n";
    writeText(modules / "react" / "package.json", R"({"name":"react","main":"index.js"})");
    writeText(modules / "react" / "index.js", "module.exports = window.React;\n");
    writeText(modules / "react" / "jsx-runtime.js", jsxRuntime);
    writeText(modules / "react" / "jsx-dev-runtime.js", jsxRuntime);
    writeText(modules / "react-dom" / "package.json", R"({"name":"react-dom","main":"index.js"})");
    writeText(modules / "react-dom" / "index.js", "module.exports = window.ReactDOM;\n");
    writeText(modules / "react-dom" / "client.js", "module.exports = window.ReactDOM;\n");
}

PackageFetcher::Result fetchNow(const std::string& name, const std::filesystem::path& folder,
                                const std::optional<std::filesystem::path>& esbuild,
                                const std::function<void(std::string)>& progress) {
    gchar* npm = g_find_program_in_path("npm");
    const std::string npmPath = npm ? npm : "";
    g_free(npm);
    if (npmPath.empty())
        return {false, "Kelmo needs npm to download packages, and npm was not found on your "
                       "computer. Install it (sudo apt install npm) and try again."};
    if (!esbuild)
        return {false, "Kelmo's bundler (esbuild) is missing, so it cannot prepare packages."};

    const std::string flat = PackageFetcher::bundleFileName(name);
    const auto work = folder / ("work~" + flat.substr(4, flat.size() - 7));
    std::error_code ignored;
    std::filesystem::remove_all(work, ignored);
    if (!writeText(work / "package.json", "{\"private\":true}\n"))
        return {false, "Kelmo cannot write to " + folder.string() + "."};

    progress("Downloading " + name + " from npm…");
    const Run install = runProgram({npmPath, "install", "--ignore-scripts", "--no-audit",
                                    "--no-fund", "--no-package-lock", "--loglevel=error",
                                    // The page's React serves as every package's peer.
                                    "--legacy-peer-deps", "--", name},
                                   work);
    if (!install.exited || install.status != 0)
        return {false, npmFailure(name, install.errors)};

    progress("Preparing " + name + "…");
    writePageReact(work / "node_modules");
    const std::string literal = "\"" + name + "\""; // a package name needs no escaping
    writeText(work / "kelmo-entry.js",
              "import * as module from " + literal +
                  ";\n"
                  "(window.kelmoLibraries = window.kelmoLibraries || {})[" +
                  literal + "] = module;\n");
    const auto output = folder / flat;
    const Run bundle =
        runProgram({esbuild->string(), "kelmo-entry.js", "--bundle", "--format=iife", "--minify",
                    "--platform=browser", "--target=safari18", "--loader:.js=jsx",
                    "--define:process.env.NODE_ENV=\"production\"", "--define:global=window",
                    "--log-level=error", "--outfile=" + output.string()},
                   work);
    std::filesystem::remove_all(work, ignored);
    if (!bundle.exited || bundle.status != 0) {
        std::filesystem::remove(output, ignored);
        return {false, "Kelmo downloaded \"" + name + "\" but could not prepare it to run."};
    }
    return {true, {}};
}

} // namespace

std::filesystem::path PackageFetcher::defaultFolder() {
    return std::filesystem::path{g_get_user_cache_dir()} / "kelmo" / "packages";
}

PackageFetcher::PackageFetcher(std::filesystem::path folder,
                               std::optional<std::filesystem::path> esbuild)
    : folder_{std::move(folder)}, esbuild_{std::move(esbuild)} {}

PackageFetcher::~PackageFetcher() = default;

bool PackageFetcher::isPackageName(const std::string& name) {
    static const std::regex pattern{"^(@[a-z0-9~][a-z0-9._~-]*/)?[a-z0-9~][a-z0-9._~-]*$"};
    return name.size() <= 214 && std::regex_match(name, pattern);
}

std::string PackageFetcher::packageOf(const std::string& specifier) {
    const auto first = specifier.find('/');
    if (specifier.starts_with('@') && first != std::string::npos)
        return specifier.substr(0, specifier.find('/', first + 1));
    return specifier.substr(0, first);
}

std::string PackageFetcher::bundleFileName(const std::string& name) {
    std::string flat = name;
    std::replace(flat.begin(), flat.end(), '/', '~');
    return "pkg~" + flat + ".js";
}

std::vector<std::string> PackageFetcher::downloaded() const {
    std::vector<std::string> names;
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator{folder_, error}) {
        const std::string file = entry.path().filename().string();
        if (!file.starts_with("pkg~") || !file.ends_with(".js"))
            continue;
        std::string name = file.substr(4, file.size() - 7);
        std::replace(name.begin(), name.end(), '~', '/');
        if (isPackageName(name))
            names.push_back(std::move(name));
    }
    std::sort(names.begin(), names.end());
    return names;
}

void PackageFetcher::clear() {
    std::error_code ignored;
    std::filesystem::remove_all(folder_, ignored);
}

void PackageFetcher::fetch(const std::string& name,
                           std::function<void(const std::string&)> progress,
                           std::function<void(Result)> done) {
    std::weak_ptr<bool> alive = alive_;
    // Hands a call to the main context, where it runs only while the fetcher lives.
    auto onMain = [alive](std::function<void()> call) {
        auto* held = new std::function<void()>{[alive, call = std::move(call)] {
            if (!alive.expired())
                call();
        }};
        g_main_context_invoke_full(
            nullptr, G_PRIORITY_DEFAULT,
            [](gpointer data) {
                (*static_cast<std::function<void()>*>(data))();
                return G_SOURCE_REMOVE;
            },
            held, [](gpointer data) { delete static_cast<std::function<void()>*>(data); });
    };
    if (!isPackageName(name)) {
        onMain([done, name] { done({false, "\"" + name + "\" is not a package name."}); });
        return;
    }
    std::thread{[folder = folder_, esbuild = esbuild_, name, progress, done, onMain] {
        const auto result = fetchNow(name, folder, esbuild, [&](std::string step) {
            onMain([progress, step] { progress(step); });
        });
        onMain([done, result] { done(result); });
    }}.detach();
}

} // namespace kelmo
