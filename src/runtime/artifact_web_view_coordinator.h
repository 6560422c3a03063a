#pragma once

#include "runtime/artifact_compiler.h"
#include "runtime/artifact_file_scheme_handler.h"
#include "runtime/artifact_scheme_handler.h"
#include "runtime/artifact_storage.h"
#include "runtime/artifact_web_view.h"
#include "runtime/navigation_policy.h"
#include "runtime/script_dialog.h"
#include "runtime/source_file.h"
#include "runtime/styles_cache.h"

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <sigc++/connection.h>
#include <string>
#include <string_view>
#include <vector>
#include <webkit/webkit.h>

namespace kelmo {

// The script message channels the page may post to.
inline constexpr char jsConsoleChannel[] = "jsConsole";
inline constexpr char artifactBridgeChannel[] = "artifactBridge";
// The page's window.storage asks here and waits for the answer.
inline constexpr char storageChannel[] = "kelmoStorage";
// The page hands over the Tailwind rules of its first frame: {key, styles}.
inline constexpr char stylesChannel[] = "kelmoStyles";
// The page tells which package it imports that Kelmo does not have.
inline constexpr char packagesChannel[] = "kelmoPackages";

// The line written to standard output for one console message: the level's prefix,
// a space, the message and a line feed. Line breaks and other control characters in
// the message are written as escapes ("\n", "\x1b"), so that one message is one line.
std::string consoleLine(std::string_view level, std::string_view message);

// Drives one hosted web view: decides when to load, loads, follows the navigation
// and receives the page's script messages. Everything it reports to its parent goes
// through the parent's posted changes.
//
// Each load has a token of its own, handed only to the artifact's top-level page by
// the script that the application puts at its start (page-bridge.js, injected into
// the top frame of the artifact's origin and nowhere else); a message without the
// current token (from a frame, another origin, or a page since replaced) is dropped.
class ArtifactWebView::Coordinator {
public:
    explicit Coordinator(ArtifactWebView& parent);
    ~Coordinator();
    Coordinator(const Coordinator&) = delete;
    Coordinator& operator=(const Coordinator&) = delete;

    // Registers the message channels on the content manager the web view will use.
    void listenTo(WebKitUserContentManager* contentManager);
    // Follows the web view's navigation.
    void follow(WebKitWebView* webView);

    void loadIfNeeded(const Artifact& artifact, const Uuid& reloadToken, WebKitWebView* webView);

    std::shared_ptr<ArtifactSchemeHandler> schemeHandler;
    std::shared_ptr<ArtifactFileSchemeHandler> fileSchemeHandler;
    std::shared_ptr<ArtifactStorage> storage;
    std::shared_ptr<StylesCache> stylesCache;
    std::shared_ptr<const ArtifactCompiler> compiler;
    std::chrono::milliseconds loadTimeout{std::chrono::seconds{60}};
    // The text of page-bridge.js: a function that takes the load's token.
    std::optional<std::string> bridgeScript;
    ArtifactWebView::BrowserOpener openInBrowser;
    ArtifactWebView::SaveChooser chooseWhereToSave;

private:
    void load(const Artifact& artifact, WebKitWebView* webView);
    void runSource(const Artifact& artifact, SourceFile source);
    void beginLoad(const std::string& pageUrl, bool isPlayer);
    void startTimeout(WebKitWebView* webView);
    void compileOnTheSide(const std::string& code);
    void answerWaitingRequests();
    void stopServingPlayer();
    bool isFromCurrentLoad(JSCValue* body) const;

    void didStartProvisionalNavigation();
    void didFinish();
    void didFail(std::string_view uri, const GError* error);
    void didChangeResponsiveness();
    void didEnd(WebKitWebProcessTerminationReason reason);
    bool decidePolicy(WebKitPolicyDecision* decision, WebKitPolicyDecisionType type);
    void didStartDownload(WebKitDownload* download);
    void askWhereToSave(WebKitDownload* download, const char* suggestedName);
    void didReceive(std::string_view channel, JSCValue* body);
    void answerStorageRequest(JSCValue* request, WebKitScriptMessageReply* reply);
    void keepStyles(JSCValue* body);
    void reportMissingPackage(JSCValue* body);
    bool showScriptDialog(WebKitScriptDialog* dialog);
    void closeScriptDialog();

    static void onLoadChanged(WebKitWebView*, WebKitLoadEvent event, gpointer self);
    static gboolean onLoadFailed(WebKitWebView*, WebKitLoadEvent, gchar* uri, GError* error,
                                 gpointer self);
    static void onResponsiveness(WebKitWebView* webView, GParamSpec*, gpointer self);
    static void onWebProcessTerminated(WebKitWebView*, WebKitWebProcessTerminationReason reason,
                                       gpointer self);
    static gboolean onDecidePolicy(WebKitWebView*, WebKitPolicyDecision* decision,
                                   WebKitPolicyDecisionType type, gpointer self);
    static gboolean onScriptDialog(WebKitWebView*, WebKitScriptDialog* dialog, gpointer self);
    static void onDownloadStarted(WebKitNetworkSession*, WebKitDownload* download, gpointer self);
    static gboolean onDecideDestination(WebKitDownload* download, gchar* suggestedName,
                                        gpointer self);
    static void onConsoleMessage(WebKitUserContentManager*, JSCValue* body, gpointer self);
    static void onBridgeMessage(WebKitUserContentManager*, JSCValue* body, gpointer self);
    static void onStylesMessage(WebKitUserContentManager*, JSCValue* body, gpointer self);
    static void onPackagesMessage(WebKitUserContentManager*, JSCValue* body, gpointer self);
    static gboolean onStorageMessage(WebKitUserContentManager*, JSCValue* request,
                                     WebKitScriptMessageReply* reply, gpointer self);

    ArtifactWebView& parent_;
    std::string lastLoadKey_;
    // The artifact of the load under way, and that load's token.
    std::optional<Artifact> artifact_;
    std::string loadToken_;
    NavigationPolicy navigation_;
    // The compile of the code being run, while it runs, and the page's requests that
    // wait for its module.
    std::unique_ptr<ArtifactCompiler::Job> compileJob_;
    std::vector<std::function<void()>> waitingForModule_;
    GObjectRef<WebKitUserContentManager> contentManager_;
    GObjectRef<WebKitWebView> webView_;
    GObjectRef<WebKitNetworkSession> networkSession_;
    std::vector<GObjectRef<WebKitDownload>> downloads_;
    sigc::connection timeout_;
    sigc::connection runAgain_;
    bool timedOut_ = false;
    // From load() until the load ends; and whether it was begun again in a new web
    // process because the old one stopped answering.
    bool loadPending_ = false;
    bool restartedLoad_ = false;
    // The page's alert, confirm or prompt while one is open; a load's time-out waits
    // while it is.
    std::shared_ptr<ScriptDialog> scriptDialog_;
    bool replacingPage_ = false; // from load() until the new page is committed
    // Counts the sources read for loads; a read answers only for the latest load, and
    // only while the coordinator lives.
    unsigned sourceReads_ = 0;
    // While the source of a load is read: the page shown until then goes on, and what
    // its own navigation reports is not this load's.
    bool readingSource_ = false;
    // From asking WebKit for the page until its navigation starts: the end of the page
    // it replaces may still be reported meanwhile.
    bool awaitingStart_ = false;
    std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
    sigc::connection scriptDialogClosed_;
};

} // namespace kelmo
