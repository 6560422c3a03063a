#include "web_view_fixture.h"

#include "test_support.h"

#include <cstdio>
#include <fcntl.h>
#include <glib.h>
#include <gtest/gtest.h>
#include <gtkmm/object.h>
#include <jsc/jsc.h>
#include <unistd.h>

namespace kelmo::testing {

WebViewFixture::WebViewFixture(ResourceLocator resources,
                               std::shared_ptr<const ArtifactCompiler> compiler)
    : view_{Gtk::make_managed<ArtifactWebView>(
          std::move(resources), ArtifactStorage::defaultDirectory(),
          StylesCache::defaultDirectory(), std::move(compiler))} {
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
    return loadEnds();
}

bool WebViewFixture::loadEnds() {
    return runMainLoopUntil(
        [this] {
            return !errorMessages.empty() || (loadingReports.size() >= 2 && !loadingReports.back());
        },
        pageDeadline);
}

std::string WebViewFixture::evaluate(const std::string& script) {
    return evaluateIn(view_->webView(), script);
}

std::string evaluateIn(WebKitWebView* webView, const std::string& script) {
    // Shared with the callback, which may come after a deadline that passed first.
    using Answer = std::shared_ptr<std::optional<std::string>>;
    auto answer = std::make_shared<std::optional<std::string>>();
    webkit_web_view_evaluate_javascript(
        webView, script.c_str(), -1, nullptr, nullptr, nullptr,
        [](GObject* source, GAsyncResult* result, gpointer data) {
            std::unique_ptr<Answer> answer{static_cast<Answer*>(data)};
            GError* error = nullptr;
            JSCValue* value =
                webkit_web_view_evaluate_javascript_finish(WEBKIT_WEB_VIEW(source), result, &error);
            gchar* text = value ? jsc_value_to_string(value) : nullptr;
            **answer = value ? std::string{text ? text : ""}
                             : "<exception: " + std::string{error ? error->message : ""} + ">";
            g_free(text);
            g_clear_object(&value);
            g_clear_error(&error);
        },
        new Answer{answer});
    if (!runMainLoopUntil([&] { return answer->has_value(); }, pageDeadline))
        return "<timeout>";
    return **answer;
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

std::string WebViewFixture::logged(const StandardOutputCapture& output) {
    evaluate("console.log('done')");
    EXPECT_TRUE(output.waitFor("🔵 [JS] done\n"));
    return output.text();
}

bool WebViewFixture::setViewportWidth(int width) {
    view_->set_size_request(width, -1);
    view_->set_halign(Gtk::Align::START);
    return waitUntil("window.innerWidth === " + std::to_string(width));
}

std::string WebViewFixture::play(const std::filesystem::path& file) {
    EXPECT_TRUE(load(file)) << file;
    return waitForPlayer();
}

std::string WebViewFixture::text(const std::string& selector) {
    return evaluate("document.querySelector('" + selector + "').textContent");
}

std::string WebViewFixture::style(const std::string& selector, const std::string& property) {
    return evaluate("getComputedStyle(document.querySelector('" + selector + "'))." + property);
}

std::string WebViewFixture::panelText() {
    return evaluate("(document.getElementById('kelmo-error') || {}).textContent || ''");
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
