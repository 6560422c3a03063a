#pragma once

#include "runtime/artifact_compiler.h"
#include "runtime/artifact_file_scheme_handler.h"
#include "runtime/artifact_scheme_handler.h"
#include "runtime/artifact_storage.h"
#include "runtime/artifact_web_view.h"
#include "runtime/styles_cache.h"

#include <chrono>
#include <functional>
#include <memory>
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

// The line written to standard output for one console message: the level's prefix,
// a space, the message and a line feed.
std::string consoleLine(std::string_view level, std::string_view message);

// Drives one hosted web view: decides when to load, loads, follows the navigation
// and receives the page's script messages. Everything it reports to its parent goes
// through the parent's posted changes.
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

private:
    void load(const Artifact& artifact, WebKitWebView* webView);
    void startTimeout(WebKitWebView* webView);
    void compileOnTheSide(const std::string& code);
    void answerWaitingRequests();

    void didStartProvisionalNavigation();
    void didFinish();
    void didFail(const GError* error);
    void didReceive(std::string_view channel, JSCValue* body);
    void answerStorageRequest(JSCValue* request, WebKitScriptMessageReply* reply);
    void keepStyles(JSCValue* body);

    static void onLoadChanged(WebKitWebView*, WebKitLoadEvent event, gpointer self);
    static gboolean onLoadFailed(WebKitWebView*, WebKitLoadEvent, gchar*, GError* error,
                                 gpointer self);
    static void onConsoleMessage(WebKitUserContentManager*, JSCValue* body, gpointer self);
    static void onBridgeMessage(WebKitUserContentManager*, JSCValue* body, gpointer self);
    static void onStylesMessage(WebKitUserContentManager*, JSCValue* body, gpointer self);
    static gboolean onStorageMessage(WebKitUserContentManager*, JSCValue* request,
                                     WebKitScriptMessageReply* reply, gpointer self);

    ArtifactWebView& parent_;
    std::string lastLoadKey_;
    // The compile of the code being run, while it runs, and the page's requests that
    // wait for its module.
    std::unique_ptr<ArtifactCompiler::Job> compileJob_;
    std::vector<std::function<void()>> waitingForModule_;
    GObjectRef<WebKitUserContentManager> contentManager_;
    GObjectRef<WebKitWebView> webView_;
    sigc::connection timeout_;
    bool timedOut_ = false;
};

} // namespace kelmo
