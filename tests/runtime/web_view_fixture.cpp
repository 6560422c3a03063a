#include "web_view_fixture.h"

#include "test_support.h"

#include <cstdio>
#include <fcntl.h>
#include <glib.h>
#include <gtkmm/object.h>
#include <jsc/jsc.h>
#include <unistd.h>

namespace kelmo::testing {

WebViewFixture::WebViewFixture(ResourceLocator resources)
    : view_{Gtk::make_managed<ArtifactWebView>(std::move(resources))} {
    window_.set_default_size(1024, 700);
    window_.set_child(*view_);
    window_.present();
    view_->signalIsLoading().connect([this](bool loading) { loadingReports.push_back(loading); });
    view_->signalErrorMessage().connect(
        [this](const std::string& message) { errorMessages.push_back(message); });
}

WebViewFixture::~WebViewFixture() {
    window_.unset_child();
    drainMainLoop();
}

bool WebViewFixture::load(const Artifact& artifact) {
    loadingReports.clear();
    errorMessages.clear();
    view_->loadIfNeeded(artifact, Uuid::random());
    return runMainLoopUntil(
        [this] {
            return !errorMessages.empty() || (loadingReports.size() >= 2 && !loadingReports.back());
        },
        pageDeadline);
}

std::string WebViewFixture::evaluate(const std::string& script) {
    struct Answer {
        bool done = false;
        std::string text;
    };
    auto answer = std::make_shared<Answer>();
    auto* pending = new std::shared_ptr<Answer>{answer};
    webkit_web_view_evaluate_javascript(
        view_->webView(), script.c_str(), -1, nullptr, nullptr, nullptr,
        [](GObject* source, GAsyncResult* result, gpointer data) {
            std::unique_ptr<std::shared_ptr<Answer>> owner{
                static_cast<std::shared_ptr<Answer>*>(data)};
            auto& answer = **owner;
            GError* error = nullptr;
            JSCValue* value =
                webkit_web_view_evaluate_javascript_finish(WEBKIT_WEB_VIEW(source), result, &error);
            if (value) {
                gchar* text = jsc_value_to_string(value);
                answer.text = text ? text : "";
                g_free(text);
                g_object_unref(value);
            } else {
                answer.text = std::string{"<exception: "} + (error ? error->message : "") + ">";
                g_clear_error(&error);
            }
            answer.done = true;
        },
        pending);
    if (!runMainLoopUntil([&] { return answer->done; }, pageDeadline))
        return "<timeout>";
    return answer->text;
}

bool WebViewFixture::waitUntil(const std::string& expression) {
    const auto deadline = std::chrono::steady_clock::now() + pageDeadline;
    while (std::chrono::steady_clock::now() < deadline) {
        if (evaluate("String(Boolean(" + expression + "))") == "true")
            return true;
        drainMainLoop();
    }
    return false;
}

bool WebViewFixture::setViewportWidth(int width) {
    view_->set_size_request(width, -1);
    view_->set_halign(Gtk::Align::START);
    return waitUntil("window.innerWidth === " + std::to_string(width));
}

std::string WebViewFixture::waitForPlayer() {
    const std::string state = "document.documentElement.dataset.kelmoState";
    waitUntil(state + " === 'rendered' || " + state + " === 'error'");
    return evaluate(state);
}

StandardOutputCapture::StandardOutputCapture() {
    gchar* name = nullptr;
    const int descriptor = g_file_open_tmp("kelmo-stdout-XXXXXX", &name, nullptr);
    file_ = name;
    g_free(name);
    std::fflush(stdout);
    savedDescriptor_ = ::dup(STDOUT_FILENO);
    ::dup2(descriptor, STDOUT_FILENO);
    ::close(descriptor);
}

StandardOutputCapture::~StandardOutputCapture() {
    std::fflush(stdout);
    ::dup2(savedDescriptor_, STDOUT_FILENO);
    ::close(savedDescriptor_);
    std::error_code ignored;
    std::filesystem::remove(file_, ignored);
}

std::string StandardOutputCapture::text() const {
    std::fflush(stdout);
    return readFile(file_);
}

bool StandardOutputCapture::waitFor(const std::string& fragment) const {
    return runMainLoopUntil([&] { return text().find(fragment) != std::string::npos; },
                            pageDeadline);
}

} // namespace kelmo::testing
