#include "runtime/artifact_web_view_coordinator.h"

#include "runtime/artifact_origin.h"
#include "runtime/package_fetcher.h"
#include "runtime/scheme_support.h"

#include <cstdio>
#include <glib.h>
#include <glibmm/main.h>
#include <jsc/jsc.h>
#include <utility>
#include <vector>

namespace kelmo {

namespace {

constexpr char couldNotReadFile[] = "Could not read file";
constexpr char sourceTooLarge[] = "The file is too large to run (over 10 MB)";
// Past this, a JSX or TSX source is not read: no prototype is that large, and compiling
// and embedding it would keep the page busy for minutes.
constexpr char requestTimedOut[] = "The request timed out.";
constexpr char pageCrashed[] = "The artifact's page crashed";
constexpr char pageOutOfMemory[] = "The artifact's page ran out of memory";
constexpr char storageFull[] =
    "window.storage.set: this artifact's storage is full (5 MB); delete values to make room";

// A string property of a page object, or nothing when it is missing or not a string.
std::optional<std::string> stringProperty(JSCValue* object, const char* name) {
    if (!jsc_value_object_has_property(object, name))
        return std::nullopt;
    GObjectRef<JSCValue> value =
        GObjectRef<JSCValue>::adopt(jsc_value_object_get_property(object, name));
    if (!value || !jsc_value_is_string(value.get()))
        return std::nullopt;
    // As bytes, so that a NUL character does not end the text.
    GBytes* bytes = jsc_value_to_string_as_bytes(value.get());
    if (!bytes)
        return std::string{};
    gsize size = 0;
    const auto* data = static_cast<const char*>(g_bytes_get_data(bytes, &size));
    std::string result{data ? data : "", data ? size : 0};
    g_bytes_unref(bytes);
    return result;
}

bool booleanProperty(JSCValue* object, const char* name) {
    if (!jsc_value_object_has_property(object, name))
        return false;
    GObjectRef<JSCValue> value =
        GObjectRef<JSCValue>::adopt(jsc_value_object_get_property(object, name));
    return value && jsc_value_to_boolean(value.get());
}

} // namespace

std::string consoleLine(std::string_view level, std::string_view message) {
    std::string_view prefix = "🔵 [JS]";
    if (level == "error")
        prefix = "❌ [JS]";
    else if (level == "warn")
        prefix = "⚠️  [JS]";
    else if (level == "info")
        prefix = "ℹ️  [JS]";
    static constexpr char hex[] = "0123456789abcdef";
    std::string line;
    line.reserve(prefix.size() + message.size() + 2);
    line.append(prefix).append(" ");
    for (std::size_t at = 0; at < message.size(); ++at) {
        const auto byte = static_cast<unsigned char>(message[at]);
        const auto next = at + 1 < message.size() ? static_cast<unsigned char>(message[at + 1]) : 0;
        if (byte == '\n') {
            line.append("\\n");
        } else if (byte == '\r') {
            line.append("\\r");
        } else if (byte == '\t') {
            line.append("\\t");
        } else if (byte < 0x20 || byte == 0x7f) {
            line.append("\\x").push_back(hex[byte >> 4]);
            line.push_back(hex[byte & 0xf]);
        } else if (byte == 0xc2 && next >= 0x80 && next <= 0x9f) {
            // The C1 controls, U+0080 to U+009F (a terminal reads U+009B as an escape).
            line.append("\\u00").push_back(hex[next >> 4]);
            line.push_back(hex[next & 0xf]);
            ++at;
        } else if (message.compare(at, 3, "\u2028") == 0 || message.compare(at, 3, "\u2029") == 0) {
            line.append(message[at + 2] == '\xa8' ? "\\u2028" : "\\u2029");
            at += 2;
        } else {
            line.push_back(message[at]);
        }
    }
    line.append("\n");
    return line;
}

ArtifactWebView::Coordinator::Coordinator(ArtifactWebView& parent) : parent_{parent} {}

ArtifactWebView::Coordinator::~Coordinator() {
    closeScriptDialog();
    timeout_.disconnect();
    runAgain_.disconnect();
    if (schemeHandler)
        schemeHandler->whenCompiled = nullptr;
    if (webView_)
        g_signal_handlers_disconnect_by_data(webView_.get(), this);
    if (networkSession_)
        g_signal_handlers_disconnect_by_data(networkSession_.get(), this);
    for (const auto& download : downloads_)
        g_signal_handlers_disconnect_by_data(download.get(), this);
    if (contentManager_) {
        g_signal_handlers_disconnect_by_data(contentManager_.get(), this);
        for (const char* channel : {jsConsoleChannel, artifactBridgeChannel, storageChannel,
                                    stylesChannel, packagesChannel})
            webkit_user_content_manager_unregister_script_message_handler(contentManager_.get(),
                                                                          channel, nullptr);
    }
}

void ArtifactWebView::Coordinator::listenTo(WebKitUserContentManager* contentManager) {
    contentManager_ = GObjectRef<WebKitUserContentManager>::retain(contentManager);
    g_signal_connect(contentManager, "script-message-received::jsConsole",
                     G_CALLBACK(onConsoleMessage), this);
    g_signal_connect(contentManager, "script-message-received::artifactBridge",
                     G_CALLBACK(onBridgeMessage), this);
    webkit_user_content_manager_register_script_message_handler(contentManager, jsConsoleChannel,
                                                                nullptr);
    webkit_user_content_manager_register_script_message_handler(contentManager,
                                                                artifactBridgeChannel, nullptr);
    g_signal_connect(contentManager, "script-message-received::kelmoStyles",
                     G_CALLBACK(onStylesMessage), this);
    webkit_user_content_manager_register_script_message_handler(contentManager, stylesChannel,
                                                                nullptr);
    g_signal_connect(contentManager, "script-message-received::kelmoPackages",
                     G_CALLBACK(onPackagesMessage), this);
    webkit_user_content_manager_register_script_message_handler(contentManager, packagesChannel,
                                                                nullptr);
    g_signal_connect(contentManager, "script-message-with-reply-received::kelmoStorage",
                     G_CALLBACK(onStorageMessage), this);
    webkit_user_content_manager_register_script_message_handler_with_reply(contentManager,
                                                                           storageChannel, nullptr);
}

void ArtifactWebView::Coordinator::follow(WebKitWebView* webView) {
    webView_ = GObjectRef<WebKitWebView>::retain(webView);
    g_signal_connect(webView, "load-changed", G_CALLBACK(onLoadChanged), this);
    g_signal_connect(webView, "load-failed", G_CALLBACK(onLoadFailed), this);
    g_signal_connect(webView, "web-process-terminated", G_CALLBACK(onWebProcessTerminated), this);
    g_signal_connect(webView, "notify::is-web-process-responsive", G_CALLBACK(onResponsiveness),
                     this);
    g_signal_connect(webView, "decide-policy", G_CALLBACK(onDecidePolicy), this);
    g_signal_connect(webView, "script-dialog", G_CALLBACK(onScriptDialog), this);
    networkSession_ =
        GObjectRef<WebKitNetworkSession>::retain(webkit_web_view_get_network_session(webView));
    g_signal_connect(networkSession_.get(), "download-started", G_CALLBACK(onDownloadStarted),
                     this);
}

void ArtifactWebView::Coordinator::loadIfNeeded(const Artifact& artifact, const Uuid& reloadToken,
                                                WebKitWebView* webView) {
    std::string key = artifact.id.toString() + "-" + reloadToken.toString();
    if (key == lastLoadKey_)
        return;
    lastLoadKey_ = std::move(key);
    restartedLoad_ = false;
    load(artifact, webView);
}

void ArtifactWebView::Coordinator::load(const Artifact& artifact, WebKitWebView* webView) {
    // The page that asked is leaving: its script goes on as after Cancel, and what it
    // asks until the new page takes its place is cancelled at once.
    closeScriptDialog();
    replacingPage_ = true;
    parent_.setIsLoading(true);
    timeout_.disconnect();
    runAgain_.disconnect();
    timedOut_ = false;
    loadPending_ = true;
    readingSource_ = false;
    awaitingStart_ = false;

    // A page that no longer answers (a script that never returns) would hold the next
    // load of its process back: the process goes, and the load starts in a new one.
    if (!webkit_web_view_get_is_web_process_responsive(webView))
        webkit_web_view_terminate_web_process(webView);

    const std::filesystem::path url{artifact.type.url};
    const std::string host = originHostFor(url);
    if (artifact.type.kind == ArtifactType::Kind::html) {
        artifact_ = artifact;
        stopServingPlayer();
        if (fileSchemeHandler)
            fileSchemeHandler->setRoot(url.parent_path(), host);
        const auto page = ArtifactFileSchemeHandler::urlFor(host, url.filename());
        beginLoad(page, false);
        webkit_web_view_load_uri(webView, page.c_str());
        awaitingStart_ = true;
        startTimeout(webView);
        return;
    }

    // The source is read off the main loop (a slow disk must not freeze the window);
    // the time-out runs meanwhile, and a read that a newer load overtook is dropped.
    startTimeout(webView);
    const unsigned read = ++sourceReads_;
    readingSource_ = true;
    SourceFile::readInBackground(
        url, SourceFile::largestSource,
        [this, alive = std::weak_ptr<bool>{alive_}, read, artifact](SourceFile source) {
            if (alive.expired() || read != sourceReads_ || timedOut_)
                return;
            runSource(artifact, std::move(source));
        });
}

void ArtifactWebView::Coordinator::runSource(const Artifact& artifact, SourceFile source) {
    readingSource_ = false;
    WebKitWebView* webView = webView_.get();
    if (!source.code) {
        // The page shown before stays, and goes on as it was.
        timeout_.disconnect();
        loadPending_ = false;
        replacingPage_ = false;
        parent_.setIsLoading(false);
        parent_.setErrorMessage(source.problem == SourceFile::Problem::tooLarge ? sourceTooLarge
                                                                                : couldNotReadFile);
        return;
    }
    auto& code = source.code;
    const std::string host = originHostFor(artifact.type.url);
    artifact_ = artifact;
    if (fileSchemeHandler)
        fileSchemeHandler->clear();
    const auto page = ArtifactSchemeHandler::pageUrl(host);
    if (schemeHandler) {
        stopServingPlayer();
        schemeHandler->host = host;
        schemeHandler->pageAwaited = true;
        schemeHandler->compileKey = stylesCache ? stylesCache->keyFor(*code) : std::string{};
        schemeHandler->tailwindStyles =
            stylesCache ? stylesCache->lookup(schemeHandler->compileKey) : std::nullopt;
        compileOnTheSide(*code);
        schemeHandler->artifactCode = std::move(*code);
        schemeHandler->artifactFileName =
            displayName(std::filesystem::path{artifact.type.url}.filename().native());
    }
    beginLoad(page, true);
    webkit_web_view_load_uri(webView, page.c_str());
    awaitingStart_ = true;
}

// Ends everything the player served to the page being replaced: requests still waiting
// for a module get what there is (their page is leaving), and nothing more is served
// under its host.
void ArtifactWebView::Coordinator::stopServingPlayer() {
    if (!schemeHandler)
        return;
    answerWaitingRequests();
    compileJob_.reset();
    schemeHandler->whenCompiled = nullptr;
    schemeHandler->host.clear();
    schemeHandler->pageAwaited = false;
    schemeHandler->artifactCode.clear();
    schemeHandler->artifactFileName.clear();
    schemeHandler->compiledArtifact.reset();
    schemeHandler->compileKey.clear();
    schemeHandler->tailwindStyles.reset();
}

// A new token, and the bridge that carries it put at the start of the artifact's own
// top-level page, and only there: in the top frame, on the page's origin.
void ArtifactWebView::Coordinator::beginLoad(const std::string& pageUrl, bool isPlayer) {
    std::unique_ptr<gchar, decltype(&g_free)> token{g_uuid_string_random(), g_free};
    loadToken_ = token.get();
    navigation_.beginLoad(pageUrl, isPlayer);
    if (!contentManager_)
        return;
    webkit_user_content_manager_remove_all_scripts(contentManager_.get());
    if (!bridgeScript)
        return;
    const std::string source = *bridgeScript + "(\"" + loadToken_ + "\");\n";
    const std::string origin = NavigationPolicy::originOf(pageUrl) + "*";
    const char* const allowed[] = {origin.c_str(), nullptr};
    auto script = std::unique_ptr<WebKitUserScript, decltype(&webkit_user_script_unref)>{
        webkit_user_script_new(source.c_str(), WEBKIT_USER_CONTENT_INJECT_TOP_FRAME,
                               WEBKIT_USER_SCRIPT_INJECT_AT_DOCUMENT_START, allowed, nullptr),
        webkit_user_script_unref};
    webkit_user_content_manager_add_script(contentManager_.get(), script.get());
}

bool ArtifactWebView::Coordinator::isFromCurrentLoad(JSCValue* body) const {
    if (!body || !jsc_value_is_object(body) || loadToken_.empty())
        return false;
    return stringProperty(body, "token") == loadToken_;
}

// Compiles the code while the web process loads the page and React; the page asks for
// the module and its request waits for the compile. A module, or the compiler's error,
// reaches the page that way; without a compiler that runs, the page compiles the code
// itself.
void ArtifactWebView::Coordinator::compileOnTheSide(const std::string& code) {
    if (!compiler || !compiler->isAvailable() || schemeHandler->compileKey.empty())
        return;
    schemeHandler->whenCompiled = [this](std::function<void()> answer) {
        waitingForModule_.push_back(std::move(answer));
    };
    // The job ends with the coordinator, and its answer with it.
    compileJob_ = compiler->compile(code, [this](CompileOutcome outcome) {
        compileJob_.reset();
        schemeHandler->compiledArtifact = pageJsonOf(outcome);
        schemeHandler->whenCompiled = nullptr;
        answerWaitingRequests();
    });
}

void ArtifactWebView::Coordinator::answerWaitingRequests() {
    for (auto& answer : std::exchange(waitingForModule_, {}))
        answer();
}

// WebKit puts no time limit on a request to a custom scheme, so the page load gets
// one here: when it runs out, the load is stopped and reported as failed, and the web
// process ends with it, so that a page stuck in a script cannot hold the next load.
// The page waits for the answer while the view's owner shows the dialog, if it shows
// them at all; WebKit's own dialog is drawn inside the page otherwise.
bool ArtifactWebView::Coordinator::showScriptDialog(WebKitScriptDialog* dialog) {
    // Leaving an artifact is never held up by its page.
    if (webkit_script_dialog_get_dialog_type(dialog) ==
        WEBKIT_SCRIPT_DIALOG_BEFORE_UNLOAD_CONFIRM) {
        webkit_script_dialog_confirm_set_confirmed(dialog, TRUE);
        return true;
    }
    if (parent_.scriptDialogOpened_.empty())
        return false;
    // Handled without a reference: WebKit answers as cancelled once this returns.
    if (replacingPage_)
        return true;
    closeScriptDialog();
    auto opened = std::make_shared<ScriptDialog>(dialog);
    scriptDialog_ = opened;
    const bool wasTiming = timeout_.connected();
    timeout_.disconnect();
    scriptDialogClosed_ = opened->signalClosed().connect([this, wasTiming] {
        if (wasTiming && loadPending_ && webView_)
            startTimeout(webView_.get());
    });
    parent_.post([this, opened] {
        if (opened->isOpen())
            parent_.scriptDialogOpened_.emit(opened);
    });
    return true;
}

void ArtifactWebView::Coordinator::closeScriptDialog() {
    if (!scriptDialog_)
        return;
    scriptDialogClosed_.disconnect();
    std::exchange(scriptDialog_, nullptr)->cancel();
}

void ArtifactWebView::Coordinator::startTimeout(WebKitWebView* webView) {
    timeout_ = Glib::signal_timeout().connect(
        [this, webView] {
            timedOut_ = true;
            readingSource_ = false;
            webkit_web_view_stop_loading(webView);
            webkit_web_view_terminate_web_process(webView);
            parent_.setIsLoading(false);
            parent_.setErrorMessage(requestTimedOut);
            return false;
        },
        static_cast<unsigned>(loadTimeout.count()));
}

void ArtifactWebView::Coordinator::didStartProvisionalNavigation() {
    if (readingSource_)
        return; // the page being replaced, which goes on until the source is read
    awaitingStart_ = false;
    // A load whose time-out came before WebKit began it found nothing to stop then; it
    // is stopped now and stays reported as timed out.
    if (timedOut_) {
        webkit_web_view_stop_loading(webView_.get());
        return;
    }
    // A navigation away from the artifact is refused when its answer comes; the
    // artifact keeps running meanwhile.
    const char* uri = webkit_web_view_get_uri(webView_.get());
    if (uri && !navigation_.admitsTopFrameResponse(uri))
        return;
    parent_.setIsLoading(true);
}

void ArtifactWebView::Coordinator::didFinish() {
    // The end of the page being replaced (which may still finish once its script was
    // let go), not of this load.
    if (readingSource_ || awaitingStart_)
        return;
    timeout_.disconnect();
    loadPending_ = false;
    // WebKit also ends a stopped or failed load with "finished".
    if (std::exchange(timedOut_, false))
        return;
    parent_.setIsLoading(false);
}

void ArtifactWebView::Coordinator::didFail(std::string_view uri, const GError* error) {
    // A navigation away that was refused, or failed on its way out, or the page being
    // replaced: the load under way goes on, and nothing failed for the user.
    if (readingSource_ || awaitingStart_ || !navigation_.admitsTopFrameResponse(uri))
        return;
    timeout_.disconnect();
    loadPending_ = false;
    // A load stopped by its time-out has already been reported as such.
    if (timedOut_)
        return;
    parent_.setIsLoading(false);
    parent_.setErrorMessage(error && error->message ? error->message : "");
}

// A load waits in a web process that stopped answering (the page it showed runs a
// script without end): the process goes and the load begins again in a new one, once.
void ArtifactWebView::Coordinator::didChangeResponsiveness() {
    if (!webView_ || webkit_web_view_get_is_web_process_responsive(webView_.get()) ||
        !loadPending_ || !artifact_ || std::exchange(restartedLoad_, true))
        return;
    webkit_web_view_terminate_web_process(webView_.get());
    load(*artifact_, webView_.get());
}

// The web process is gone, and with it the page: nothing answers on screen any more.
void ArtifactWebView::Coordinator::didEnd(WebKitWebProcessTerminationReason reason) {
    closeScriptDialog();
    if (reason == WEBKIT_WEB_PROCESS_TERMINATED_BY_API)
        return;
    timeout_.disconnect();
    runAgain_.disconnect();
    loadPending_ = false;
    loadToken_.clear();
    stopServingPlayer();
    if (fileSchemeHandler)
        fileSchemeHandler->clear();
    navigation_.clear();
    parent_.setIsLoading(false);
    parent_.setPageEnded(reason == WEBKIT_WEB_PROCESS_EXCEEDED_MEMORY_LIMIT ? pageOutOfMemory
                                                                            : pageCrashed);
}

bool ArtifactWebView::Coordinator::decidePolicy(WebKitPolicyDecision* decision,
                                                WebKitPolicyDecisionType type) {
    if (type == WEBKIT_POLICY_DECISION_TYPE_RESPONSE) {
        auto* response = WEBKIT_RESPONSE_POLICY_DECISION(decision);
        if (!webkit_response_policy_decision_is_main_frame_main_resource(response))
            return false;
        const char* uri =
            webkit_uri_request_get_uri(webkit_response_policy_decision_get_request(response));
        if (uri && navigation_.admitsTopFrameResponse(uri))
            return false;
        webkit_policy_decision_ignore(decision);
        return true;
    }
    auto* action = webkit_navigation_policy_decision_get_navigation_action(
        WEBKIT_NAVIGATION_POLICY_DECISION(decision));
    const char* uri = webkit_uri_request_get_uri(webkit_navigation_action_get_request(action));
    const auto kind = webkit_navigation_action_get_navigation_type(action);
    const NavigationRequest request{
        .uri = uri ? uri : "",
        .newWindow = type == WEBKIT_POLICY_DECISION_TYPE_NEW_WINDOW_ACTION,
        .linkClicked = kind == WEBKIT_NAVIGATION_TYPE_LINK_CLICKED,
        .userGesture = webkit_navigation_action_is_user_gesture(action) != FALSE,
        .reload = kind == WEBKIT_NAVIGATION_TYPE_RELOAD,
    };
    const auto verdict = navigation_.decide(request);
    if (verdict == NavigationVerdict::allow)
        return false;
    webkit_policy_decision_ignore(decision);
    if (verdict == NavigationVerdict::openInBrowser && openInBrowser) {
        openInBrowser(std::string{request.uri});
    } else if (verdict == NavigationVerdict::runAgain && artifact_) {
        // Later, outside the engine's call.
        runAgain_ = Glib::signal_idle().connect([this] {
            if (artifact_ && webView_)
                load(*artifact_, webView_.get());
            return false;
        });
    }
    return true;
}

// A download that the page starts is saved where the user says, as in a browser.
void ArtifactWebView::Coordinator::didStartDownload(WebKitDownload* download) {
    if (webkit_download_get_web_view(download) != webView_.get())
        return;
    webkit_download_set_allow_overwrite(download, TRUE); // the save dialog asks first
    downloads_.push_back(GObjectRef<WebKitDownload>::retain(download));
    const auto forget = +[](WebKitDownload* download, gpointer self) {
        auto& downloads = static_cast<Coordinator*>(self)->downloads_;
        std::erase_if(downloads, [download](const auto& held) { return held.get() == download; });
    };
    // Emitted at the end of every download, a failed or cancelled one too.
    g_signal_connect(download, "finished", G_CALLBACK(forget), this);
    g_signal_connect(download, "decide-destination", G_CALLBACK(onDecideDestination), this);
}

void ArtifactWebView::Coordinator::askWhereToSave(WebKitDownload* download,
                                                  const char* suggestedName) {
    if (!chooseWhereToSave) {
        webkit_download_cancel(download);
        return;
    }
    std::shared_ptr<WebKitDownload> held{static_cast<WebKitDownload*>(g_object_ref(download)),
                                         g_object_unref};
    chooseWhereToSave(suggestedName && *suggestedName ? suggestedName : "download",
                      [held](std::optional<std::filesystem::path> file) {
                          if (file)
                              webkit_download_set_destination(held.get(), file->c_str());
                          else
                              webkit_download_cancel(held.get());
                      });
}

void ArtifactWebView::Coordinator::didReceive(std::string_view channel, JSCValue* body) {
    if (channel != jsConsoleChannel || !isFromCurrentLoad(body))
        return;
    if (jsc_value_is_array(body) || jsc_value_is_function(body))
        return;
    const auto level = stringProperty(body, "level");
    const auto message = stringProperty(body, "message");
    if (!level || !message)
        return;
    const std::string line = consoleLine(*level, *message);
    std::fwrite(line.data(), 1, line.size(), stdout);
    std::fflush(stdout);
}

// A request from window.storage: {operation, key, value, shared}, keys and values as
// JSON string literals. Answers get with the value or null, set with true, delete with
// whether the key was there and list with every key of the set.
void ArtifactWebView::Coordinator::answerStorageRequest(JSCValue* request,
                                                        WebKitScriptMessageReply* reply) {
    if (!storage || !artifact_ || !isFromCurrentLoad(request)) {
        webkit_script_message_reply_return_error_message(reply, "Storage is not available");
        return;
    }
    const std::filesystem::path artifact{artifact_->type.url};
    JSCContext* context = jsc_value_get_context(request);
    const auto operation = stringProperty(request, "operation").value_or("");
    const auto key = stringProperty(request, "key").value_or("");
    const bool shared = booleanProperty(request, "shared");
    GObjectRef<JSCValue> answer;
    if (operation == "get") {
        const auto value = storage->get(artifact, key, shared);
        answer = GObjectRef<JSCValue>::adopt(value ? jsc_value_new_string(context, value->c_str())
                                                   : jsc_value_new_null(context));
    } else if (operation == "set") {
        const auto value = stringProperty(request, "value");
        if (!value) {
            webkit_script_message_reply_return_error_message(reply, "The value must be a string");
            return;
        }
        if (!storage->set(artifact, key, *value, shared)) {
            webkit_script_message_reply_return_error_message(reply, storageFull);
            return;
        }
        answer = GObjectRef<JSCValue>::adopt(jsc_value_new_boolean(context, TRUE));
    } else if (operation == "delete") {
        answer = GObjectRef<JSCValue>::adopt(
            jsc_value_new_boolean(context, storage->remove(artifact, key, shared)));
    } else if (operation == "list") {
        const auto keys = storage->keys(artifact, shared);
        std::vector<const char*> strv;
        for (const auto& listed : keys)
            strv.push_back(listed.c_str());
        strv.push_back(nullptr);
        answer = GObjectRef<JSCValue>::adopt(
            jsc_value_new_array_from_strv(context, const_cast<char**>(strv.data())));
    } else {
        webkit_script_message_reply_return_error_message(reply, "Unknown storage operation");
        return;
    }
    webkit_script_message_reply_return_value(reply, answer.get());
}

// Keeps the Tailwind rules of the first frame of the code this load runs, once.
void ArtifactWebView::Coordinator::keepStyles(JSCValue* body) {
    if (!stylesCache || !schemeHandler || schemeHandler->tailwindStyles || !isFromCurrentLoad(body))
        return;
    const auto key = stringProperty(body, "key");
    auto styles = stringProperty(body, "styles");
    if (!key || key->empty() || *key != schemeHandler->compileKey || !styles)
        return;
    stylesCache->store(*key, *styles);
    schemeHandler->tailwindStyles = std::move(styles);
}

void ArtifactWebView::Coordinator::reportMissingPackage(JSCValue* body) {
    if (!isFromCurrentLoad(body))
        return;
    const auto name = stringProperty(body, "missing");
    if (!name || !PackageFetcher::isPackageName(*name))
        return;
    parent_.post([this, name = *name] { parent_.packageMissing_.emit(name); });
}

void ArtifactWebView::Coordinator::onLoadChanged(WebKitWebView*, WebKitLoadEvent event,
                                                 gpointer self) {
    auto* coordinator = static_cast<Coordinator*>(self);
    if (event == WEBKIT_LOAD_STARTED)
        coordinator->didStartProvisionalNavigation();
    else if (event == WEBKIT_LOAD_COMMITTED)
        coordinator->replacingPage_ = false;
    else if (event == WEBKIT_LOAD_FINISHED)
        coordinator->didFinish();
}

gboolean ArtifactWebView::Coordinator::onLoadFailed(WebKitWebView*, WebKitLoadEvent, gchar* uri,
                                                    GError* error, gpointer self) {
    static_cast<Coordinator*>(self)->didFail(uri ? uri : "", error);
    // Handled: the view keeps what it showed instead of WebKit's error page.
    return TRUE;
}

void ArtifactWebView::Coordinator::onWebProcessTerminated(WebKitWebView*,
                                                          WebKitWebProcessTerminationReason reason,
                                                          gpointer self) {
    static_cast<Coordinator*>(self)->didEnd(reason);
}

void ArtifactWebView::Coordinator::onResponsiveness(WebKitWebView*, GParamSpec*, gpointer self) {
    static_cast<Coordinator*>(self)->didChangeResponsiveness();
}

gboolean ArtifactWebView::Coordinator::onScriptDialog(WebKitWebView*, WebKitScriptDialog* dialog,
                                                      gpointer self) {
    return static_cast<Coordinator*>(self)->showScriptDialog(dialog);
}

gboolean ArtifactWebView::Coordinator::onDecidePolicy(WebKitWebView*,
                                                      WebKitPolicyDecision* decision,
                                                      WebKitPolicyDecisionType type,
                                                      gpointer self) {
    return static_cast<Coordinator*>(self)->decidePolicy(decision, type);
}

void ArtifactWebView::Coordinator::onDownloadStarted(WebKitNetworkSession*,
                                                     WebKitDownload* download, gpointer self) {
    static_cast<Coordinator*>(self)->didStartDownload(download);
}

gboolean ArtifactWebView::Coordinator::onDecideDestination(WebKitDownload* download,
                                                           gchar* suggestedName, gpointer self) {
    static_cast<Coordinator*>(self)->askWhereToSave(download, suggestedName);
    return TRUE;
}

void ArtifactWebView::Coordinator::onConsoleMessage(WebKitUserContentManager*, JSCValue* body,
                                                    gpointer self) {
    static_cast<Coordinator*>(self)->didReceive(jsConsoleChannel, body);
}

void ArtifactWebView::Coordinator::onBridgeMessage(WebKitUserContentManager*, JSCValue* body,
                                                   gpointer self) {
    static_cast<Coordinator*>(self)->didReceive(artifactBridgeChannel, body);
}

void ArtifactWebView::Coordinator::onStylesMessage(WebKitUserContentManager*, JSCValue* body,
                                                   gpointer self) {
    static_cast<Coordinator*>(self)->keepStyles(body);
}

void ArtifactWebView::Coordinator::onPackagesMessage(WebKitUserContentManager*, JSCValue* body,
                                                     gpointer self) {
    static_cast<Coordinator*>(self)->reportMissingPackage(body);
}

gboolean ArtifactWebView::Coordinator::onStorageMessage(WebKitUserContentManager*,
                                                        JSCValue* request,
                                                        WebKitScriptMessageReply* reply,
                                                        gpointer self) {
    static_cast<Coordinator*>(self)->answerStorageRequest(request, reply);
    return TRUE;
}

} // namespace kelmo
