#pragma once

#include "model/artifact.h"
#include "model/uuid.h"
#include "runtime/artifact_compiler.h"
#include "runtime/artifact_storage.h"
#include "runtime/gobject_ref.h"
#include "runtime/resource_locator.h"
#include "runtime/script_dialog.h"
#include "runtime/styles_cache.h"

#include <chrono>
#include <deque>
#include <functional>
#include <gtkmm/widget.h>
#include <memory>
#include <optional>
#include <sigc++/signal.h>
#include <string>
#include <vector>
#include <webkit/webkit.h>

namespace kelmo {

// Hosts the web view in which one artifact runs, in an origin of its own. HTML
// artifacts are served from their file with read access to its folder and below; JSX
// and TSX artifacts are read as text and run inside the player page
// "artifact://<host>/". The page's console output is written to standard output, one
// prefixed line per message, and its window.storage values are kept per artifact file
// (ArtifactStorage). The artifact cannot navigate the view away from its origin: a
// web link the user clicks opens in the browser.
//
// The widget owns the web view, its Coordinator (which loads and listens) and the
// scheme handlers that answer the view's requests. Whether a load is under way and
// why one failed are reported through two signals; every report is delivered later
// from the main loop, never from inside the call that caused it, in the order made.
class ArtifactWebView : public Gtk::Widget {
public:
    class Coordinator;

    // storageDirectory: where the artifacts' window.storage values are kept;
    // stylesDirectory: where the Tailwind rules of components' first frames are kept;
    // compiler: what compiles JSX and TSX (the page compiles for itself when it cannot).
    explicit ArtifactWebView(
        ResourceLocator resources = ResourceLocator::application(),
        std::filesystem::path storageDirectory = ArtifactStorage::defaultDirectory(),
        std::filesystem::path stylesDirectory = StylesCache::defaultDirectory(),
        std::shared_ptr<const ArtifactCompiler> compiler = std::make_shared<ArtifactCompiler>());
    ~ArtifactWebView() override;
    ArtifactWebView(const ArtifactWebView&) = delete;
    ArtifactWebView& operator=(const ArtifactWebView&) = delete;

    // Loads the artifact unless this artifact and token were the last ones loaded. A
    // new token forces a fresh load of the same artifact.
    void loadIfNeeded(const Artifact& artifact, const Uuid& reloadToken);

    // isLoading: true when a load starts, false when it ends, successfully or not.
    sigc::signal<void(bool)>& signalIsLoading() { return isLoadingChanged_; }
    // errorMessage: set when a load fails. Never cleared here; that is the owner's call.
    sigc::signal<void(const std::string&)>& signalErrorMessage() { return errorMessageChanged_; }

    // pageEnded: the page's web process ended (it crashed, or ran out of memory) and
    // nothing runs any more; the text says why. A new load runs the artifact again.
    sigc::signal<void(const std::string&)>& signalPageEnded() { return pageEnded_; }

    // scriptDialogOpened: the page called alert(), confirm() or prompt() and waits for
    // the answer. The dialog is closed as cancelled when another load begins or the page
    // ends. Without a slot connected, WebKit draws its own dialog inside the page.
    sigc::signal<void(std::shared_ptr<ScriptDialog>)>& signalScriptDialogOpened() {
        return scriptDialogOpened_;
    }

    // packageMissing: the page imports a package that Kelmo does not have (a plain npm
    // package name, which PackageFetcher can fetch). Said by the page, so only a hint.
    sigc::signal<void(const std::string&)>& signalPackageMissing() { return packageMissing_; }

    // How long a page may take before its load fails; 60 seconds by default. The time
    // a script dialog stays open does not count.
    void setLoadTimeout(std::chrono::milliseconds timeout);

    // Shows a web page that the user clicked in the artifact; the user's browser by default.
    using BrowserOpener = std::function<void(const std::string& uri)>;
    void setBrowserOpener(BrowserOpener opener);
    // Asks where to save a file that the page downloads, suggesting a name; answers the
    // chosen file, or nothing to cancel. A save dialog by default.
    using SaveChooser =
        std::function<void(const std::string& suggestedName,
                           std::function<void(std::optional<std::filesystem::path>)> chosen)>;
    void setSaveChooser(SaveChooser chooser);

    // The files of an HTML artifact's folder that its page has loaded so far, the page
    // itself included; none for JSX and TSX, whose page is Kelmo's.
    std::vector<std::filesystem::path> servedFiles() const;

    // The hosted web view, for running scripts in the page (tests, tools); null once
    // the widget has been destroyed.
    WebKitWebView* webView() const { return webView_.get(); }

private:
    void release();
    void post(std::function<void()> change);
    void deliverPosted();
    void setIsLoading(bool loading);
    void setErrorMessage(std::string message);
    void setPageEnded(std::string why);
    void openInBrowser(const std::string& uri);
    void chooseWhereToSave(const std::string& suggestedName,
                           std::function<void(std::optional<std::filesystem::path>)> chosen);
    bool zoomByScroll(double dy);

    GObjectRef<WebKitWebView> webView_;
    std::unique_ptr<Coordinator> coordinator_;
    std::deque<std::function<void()>> posted_;
    sigc::connection delivery_;
    sigc::connection destroyed_;
    sigc::signal<void(bool)> isLoadingChanged_;
    sigc::signal<void(const std::string&)> errorMessageChanged_;
    sigc::signal<void(const std::string&)> pageEnded_;
    sigc::signal<void(std::shared_ptr<ScriptDialog>)> scriptDialogOpened_;
    sigc::signal<void(const std::string&)> packageMissing_;
};

} // namespace kelmo
