#pragma once

#include "model/artifact.h"
#include "runtime/artifact_web_view.h"

#include <chrono>
#include <filesystem>
#include <gtkmm/window.h>
#include <memory>
#include <string>
#include <vector>

namespace kelmo::testing {

class StandardOutputCapture;

// Hosts an ArtifactWebView in a window and records what it reports.
class WebViewFixture {
public:
    explicit WebViewFixture(
        ResourceLocator resources = ResourceLocator::application(),
        std::shared_ptr<const ArtifactCompiler> compiler = std::make_shared<ArtifactCompiler>());
    ~WebViewFixture();

    ArtifactWebView& view() { return *view_; }

    // Loads with a fresh token and waits until the load has ended (or failed).
    bool load(const Artifact& artifact);
    // Waits until a load the view began has ended (or failed).
    bool loadEnds();
    bool load(const std::filesystem::path& file) { return load(Artifact::from(file)); }

    // Waits until the player page is done: answers "rendered" or "error" (or the last
    // state seen when the deadline passes).
    std::string waitForPlayer();

    // Runs the script in the page and answers its value as text ("<exception: …>"
    // when it throws, "<timeout>" when no answer comes).
    std::string evaluate(const std::string& script);

    // Loads the file and waits for the player page: answers as waitForPlayer does.
    std::string play(const std::filesystem::path& file);

    // The text of the first element the selector matches, and one of its computed
    // style properties (by its script name, "paddingTop").
    std::string text(const std::string& selector);
    std::string style(const std::string& selector, const std::string& property);

    // What the player's error panel reads; empty when it is not shown.
    std::string panelText();

    // Everything the page logged up to now: the end of a load is no proof that every
    // message arrived, so a last one is posted and waited for.
    std::string logged(const StandardOutputCapture& output);

    // Waits until the expression is true in the page.
    bool waitUntil(const std::string& expression);

    // Gives the page a viewport of this width (as a device mode does) and waits until
    // the page sees it.
    bool setViewportWidth(int width);

    std::vector<bool> loadingReports;
    std::vector<std::string> errorMessages;

private:
    Gtk::Window window_;
    ArtifactWebView* view_;
};

// Runs the script in the view's page and answers its value as text, as
// WebViewFixture::evaluate does.
std::string evaluateIn(WebKitWebView* webView, const std::string& script);

// Redirects standard output into a temporary file while it lives.
class StandardOutputCapture {
public:
    StandardOutputCapture();
    ~StandardOutputCapture();
    std::string text() const; // everything written so far
    bool waitFor(const std::string& fragment) const;

private:
    std::filesystem::path file_;
    int savedDescriptor_;
};

inline constexpr auto pageDeadline = std::chrono::seconds{60};

} // namespace kelmo::testing
