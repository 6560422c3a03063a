#include "app/batch_commands.h"

#include "model/artifact.h"
#include "model/uuid.h"
#include "runtime/artifact_web_view.h"
#include "runtime/html_export.h"
#include "runtime/page_snapshot.h"

#include <cstdio>
#include <glibmm/fileutils.h>
#include <glibmm/main.h>
#include <gtkmm/application.h>
#include <gtkmm/window.h>

namespace kelmo {
namespace {

int failed(const std::string& message) {
    std::fprintf(stderr, "kelmo: %s\n", message.c_str());
    return 1;
}

int exportHtml(const std::string& source, const std::string& output) {
    auto result = HtmlExport::exportFile(source);
    if (const auto* failure = std::get_if<HtmlExportFailure>(&result))
        return failed(failure->message);
    try {
        Glib::file_set_contents(output, std::get<std::string>(result));
    } catch (const Glib::Error& error) {
        return failed(error.what());
    }
    return 0;
}

// Runs the main context until the condition holds; false when the time is up.
bool iterateUntil(const std::function<bool()>& condition, std::chrono::seconds deadline) {
    const auto end = std::chrono::steady_clock::now() + deadline;
    auto context = Glib::MainContext::get_default();
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end)
            return false;
        context->iteration(false) || (g_usleep(1000), true);
    }
    return true;
}

int snapshot(const std::string& source, int width, const std::string& output) {
    auto application =
        Gtk::Application::create("org.kelmo.Kelmo.Snapshot", Gio::Application::Flags::NON_UNIQUE);
    if (!gtk_init_check())
        return failed("--snapshot needs a display");
    Gtk::Window window;
    window.set_default_size(width, 800);
    auto* view = Gtk::make_managed<ArtifactWebView>();
    window.set_child(*view);
    window.present();

    std::optional<std::string> problem;
    bool loaded = false;
    view->signalIsLoading().connect([&](bool loading) { loaded = !loading; });
    view->signalErrorMessage().connect([&](const std::string& message) { problem = message; });
    view->loadIfNeeded(Artifact::from(source), Uuid::random());
    if (!iterateUntil([&] { return loaded || problem; }, std::chrono::seconds{60}))
        return failed("the page took too long to load");
    if (problem)
        return failed(*problem);
    // A component renders after the page has loaded; then its first frame settles.
    std::string state;
    const auto readState = [&] {
        webkit_web_view_evaluate_javascript(
            view->webView(), "document.documentElement.dataset.kelmoState || 'rendered'", -1,
            nullptr, nullptr, nullptr,
            [](GObject* object, GAsyncResult* result, gpointer data) {
                g_autoptr(JSCValue) value = webkit_web_view_evaluate_javascript_finish(
                    WEBKIT_WEB_VIEW(object), result, nullptr);
                g_autofree char* text = value ? jsc_value_to_string(value) : nullptr;
                *static_cast<std::string*>(data) = text ? text : "error";
            },
            &state);
    };
    if (!iterateUntil(
            [&] {
                if (state == "rendered" || state == "error")
                    return true;
                if (state != "reading")
                    readState(), state = "reading";
                return false;
            },
            std::chrono::seconds{60}))
        return failed("the artifact did not render");
    if (state == "error")
        return failed("the artifact shows an error");
    const auto settled = std::chrono::steady_clock::now() + std::chrono::milliseconds{500};
    iterateUntil([&] { return std::chrono::steady_clock::now() > settled; },
                 std::chrono::seconds{1});

    bool saved = false;
    page_snapshot::saveAsPng(view->webView(), output, [&](std::optional<std::string> why) {
        problem = why;
        saved = true;
    });
    iterateUntil([&] { return saved; }, std::chrono::seconds{30});
    if (!saved || problem)
        return failed(problem.value_or("the picture was not taken"));
    return 0;
}

} // namespace

std::optional<int> runBatchCommand(const std::vector<std::string>& arguments) {
    if (arguments.size() < 2)
        return std::nullopt;
    const std::string& command = arguments[1];
    if (command == "--export-html") {
        if (arguments.size() != 4)
            return failed("usage: kelmo --export-html SOURCE OUT.html");
        return exportHtml(arguments[2], arguments[3]);
    }
    if (command == "--snapshot") {
        std::vector<std::string> rest(arguments.begin() + 2, arguments.end());
        int width = 1024;
        for (std::size_t i = 0; i + 1 < rest.size(); ++i)
            if (rest[i] == "--width") {
                width = std::atoi(rest[i + 1].c_str());
                rest.erase(rest.begin() + static_cast<long>(i),
                           rest.begin() + static_cast<long>(i) + 2);
                break;
            }
        if (rest.size() != 2 || width < 200 || width > 4096)
            return failed(
                "usage: kelmo --snapshot SOURCE [--width N] OUT.png (N from 200 to 4096)");
        return snapshot(rest[0], width, rest[1]);
    }
    return std::nullopt;
}

} // namespace kelmo
