// kelmo-run-artifacts [--fetch-missing] FOLDER [WIDTH] [SNAPSHOT-FOLDER]
//
// Runs every .jsx and .tsx file directly in FOLDER through the player page, one
// after the other in one web view WIDTH pixels wide (1024 by default), and prints
// per file "rendered" (with no error in the second after) or the first error the
// page shows, then the pass rate. With a snapshot folder, it also saves what each
// page shows there, as <file>.png, a second after it rendered. Needs a display (run
// it under xvfb-run on a headless machine). Exits with 0 when every file rendered.
// With --fetch-missing, a package a file imports and Kelmo lacks is downloaded with
// npm (as the player offers to) and the file runs again.

#include "model/artifact.h"
#include "model/uuid.h"
#include "runtime/artifact_compiler.h"
#include "runtime/artifact_web_view.h"
#include "runtime/package_fetcher.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <glib.h>
#include <glibmm/main.h>
#include <gtk/gtk.h>
#include <gtkmm/application.h>
#include <gtkmm/window.h>
#include <jsc/jsc.h>
#include <memory>
#include <string>
#include <unistd.h>
#include <vector>

namespace {

constexpr std::chrono::milliseconds pageDeadline{30000};

// Iterates the main loop until the condition holds or the time runs out.
bool iterateUntil(const std::function<bool()>& condition, std::chrono::milliseconds timeout) {
    bool expired = false;
    auto deadline = Glib::signal_timeout().connect(
        [&expired] {
            expired = true;
            return false;
        },
        static_cast<unsigned>(timeout.count()));
    while (!condition() && !expired)
        g_main_context_iteration(nullptr, TRUE);
    deadline.disconnect();
    return condition();
}

// Runs the script in the page and answers its value as text; empty on failure.
std::string evaluate(WebKitWebView* webView, const std::string& script) {
    struct Answer {
        bool done = false;
        std::string text;
    };
    auto answer = std::make_shared<Answer>();
    webkit_web_view_evaluate_javascript(
        webView, script.c_str(), -1, nullptr, nullptr, nullptr,
        [](GObject* source, GAsyncResult* result, gpointer data) {
            std::unique_ptr<std::shared_ptr<Answer>> owner{
                static_cast<std::shared_ptr<Answer>*>(data)};
            JSCValue* value = webkit_web_view_evaluate_javascript_finish(WEBKIT_WEB_VIEW(source),
                                                                         result, nullptr);
            if (value) {
                gchar* text = jsc_value_to_string(value);
                (*owner)->text = text ? text : "";
                g_free(text);
                g_object_unref(value);
            }
            (*owner)->done = true;
        },
        new std::shared_ptr<Answer>{answer});
    iterateUntil([&] { return answer->done; }, pageDeadline);
    return answer->text;
}

// The page's verdict: "rendered", or the first error it shows; and the package it
// imports that Kelmo lacks, if it says so.
std::string run(kelmo::ArtifactWebView& view, const std::filesystem::path& file,
                std::string* missingPackage = nullptr) {
    std::string loadError;
    bool loaded = false;
    auto missing = view.signalPackageMissing().connect([&](const std::string& name) {
        if (missingPackage)
            *missingPackage = name;
    });
    auto errors =
        view.signalErrorMessage().connect([&](const std::string& message) { loadError = message; });
    auto loading = view.signalIsLoading().connect([&](bool isLoading) { loaded = !isLoading; });
    view.loadIfNeeded(kelmo::Artifact::from(file), kelmo::Uuid::random());
    iterateUntil([&] { return loaded || !loadError.empty(); }, pageDeadline);
    errors.disconnect();
    loading.disconnect();

    const std::string state = "document.documentElement.dataset.kelmoState";
    std::string verdict;
    if (loadError.empty())
        iterateUntil(
            [&] {
                verdict = evaluate(view.webView(), state);
                return verdict == "rendered" || verdict == "error";
            },
            pageDeadline);
    // An error that comes soon after the first render (an effect, a fetch that fails)
    // fails the file too.
    if (verdict == "rendered")
        iterateUntil(
            [&] {
                verdict = evaluate(view.webView(), state);
                return verdict == "error";
            },
            std::chrono::milliseconds{1000});
    // The page's report of a missing package arrives from the main loop after the verdict.
    if (verdict == "error")
        iterateUntil([] { return false; }, std::chrono::milliseconds{100});
    missing.disconnect();
    if (!loadError.empty())
        return "load failed: " + loadError;
    if (verdict == "error")
        return evaluate(view.webView(),
                        "(() => { const entry = document.querySelector('.kelmo-error__entry');"
                        " return entry ? entry.querySelector('.kelmo-error__title').textContent"
                        " + ': ' + entry.querySelector('.kelmo-error__message').textContent"
                        " : 'error'; })()");
    if (verdict != "rendered")
        return "timed out (state: " + verdict + ")";
    return verdict;
}

// Saves the visible part of the page as a PNG file; whether that worked.
bool snapshot(WebKitWebView* webView, const std::filesystem::path& file) {
    struct Answer {
        bool done = false;
        bool saved = false;
        std::string file;
    };
    auto answer = std::make_shared<Answer>();
    answer->file = file.string();
    webkit_web_view_get_snapshot(
        webView, WEBKIT_SNAPSHOT_REGION_VISIBLE, WEBKIT_SNAPSHOT_OPTIONS_NONE, nullptr,
        [](GObject* source, GAsyncResult* result, gpointer data) {
            std::unique_ptr<std::shared_ptr<Answer>> owner{
                static_cast<std::shared_ptr<Answer>*>(data)};
            GdkTexture* texture =
                webkit_web_view_get_snapshot_finish(WEBKIT_WEB_VIEW(source), result, nullptr);
            if (texture) {
                (*owner)->saved = gdk_texture_save_to_png(texture, (*owner)->file.c_str());
                g_object_unref(texture);
            }
            (*owner)->done = true;
        },
        new std::shared_ptr<Answer>{answer});
    iterateUntil([&] { return answer->done; }, pageDeadline);
    return answer->saved;
}

} // namespace

// Downloads the package; whether that worked (why not goes to the report).
bool fetchPackage(const std::string& name, std::FILE* report) {
    kelmo::PackageFetcher fetcher{kelmo::PackageFetcher::defaultFolder(),
                                  kelmo::ArtifactCompiler::bundledEsbuild()};
    std::optional<kelmo::PackageFetcher::Result> result;
    fetcher.fetch(
        name, [](const std::string&) {},
        [&result](kelmo::PackageFetcher::Result done) { result = std::move(done); });
    iterateUntil([&] { return result.has_value(); }, std::chrono::minutes{5});
    const bool ok = result && result->ok;
    std::fprintf(report, "  %s %s%s%s\n", ok ? "fetched" : "could not fetch", name.c_str(),
                 ok ? "" : ": ", ok ? "" : (result ? result->message.c_str() : "no answer"));
    return ok;
}

int main(int argc, char** argv) {
    std::vector<std::string> arguments{argv + 1, argv + argc};
    const auto flag = std::find(arguments.begin(), arguments.end(), "--fetch-missing");
    const bool fetchMissing = flag != arguments.end();
    if (fetchMissing)
        arguments.erase(flag);
    if (arguments.empty()) {
        std::fprintf(stderr, "usage: %s [--fetch-missing] FOLDER [WIDTH] [SNAPSHOT-FOLDER]\n",
                     argv[0]);
        return 2;
    }
    const std::filesystem::path folder{arguments[0]};
    std::error_code error;
    const int width = arguments.size() > 1 ? std::max(320, std::atoi(arguments[1].c_str())) : 1024;
    const std::filesystem::path snapshots = arguments.size() > 2 ? arguments[2] : "";
    if (!snapshots.empty())
        std::filesystem::create_directories(snapshots, error);

    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::directory_iterator{folder, error}) {
        const auto extension = entry.path().extension().string();
        if (entry.is_regular_file() && (extension == ".jsx" || extension == ".tsx"))
            files.push_back(entry.path());
    }
    if (error) {
        std::fprintf(stderr, "Cannot read %s: %s\n", folder.c_str(), error.message().c_str());
        return 2;
    }
    std::sort(files.begin(), files.end());

    // The report goes to standard output; the pages' console lines, which the web
    // view writes there, go to standard error instead.
    std::FILE* report = fdopen(::dup(STDOUT_FILENO), "w");
    ::dup2(STDERR_FILENO, STDOUT_FILENO);

    auto application = Gtk::Application::create("org.kelmo.Kelmo.RunArtifacts",
                                                Gio::Application::Flags::NON_UNIQUE);
    gtk_init();
    Gtk::Window window;
    window.set_default_size(width, 800);
    auto* view = Gtk::make_managed<kelmo::ArtifactWebView>();
    window.set_child(*view);
    window.present();

    int rendered = 0;
    for (const auto& file : files) {
        std::string missing;
        std::string verdict = run(*view, file, &missing);
        // Each package it lacks, once, then the file again.
        std::vector<std::string> tried;
        while (fetchMissing && verdict != "rendered" && !missing.empty() &&
               std::find(tried.begin(), tried.end(), missing) == tried.end()) {
            tried.push_back(missing);
            if (!fetchPackage(missing, report))
                break;
            missing.clear();
            verdict = run(*view, file, &missing);
        }
        const bool passed = verdict == "rendered";
        rendered += passed ? 1 : 0;
        if (!snapshots.empty()) {
            // Let transitions and chart animations settle first.
            iterateUntil([] { return false; }, std::chrono::milliseconds{1500});
            const auto png = snapshots / (file.filename().string() + ".png");
            if (!snapshot(view->webView(), png))
                std::fprintf(stderr, "Could not save %s\n", png.c_str());
        }
        std::fprintf(report, "%s %s: %s\n", passed ? "PASS" : "FAIL", file.filename().c_str(),
                     verdict.c_str());
        std::fflush(report);
    }
    const double rate = files.empty() ? 0.0 : 100.0 * rendered / static_cast<double>(files.size());
    std::fprintf(report, "Pass rate: %d/%zu (%.1f%%)\n", rendered, files.size(), rate);
    std::fclose(report);
    window.unset_child();
    return rendered == static_cast<int>(files.size()) ? 0 : 1;
}
