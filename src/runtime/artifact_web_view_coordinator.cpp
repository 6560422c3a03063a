#include "runtime/artifact_web_view_coordinator.h"

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
constexpr char requestTimedOut[] = "The request timed out.";

// A string property of a page object, or nothing when it is missing or not a string.
std::optional<std::string> stringProperty(JSCValue* object, const char* name) {
    if (!jsc_value_object_has_property(object, name))
        return std::nullopt;
    GObjectRef<JSCValue> value =
        GObjectRef<JSCValue>::adopt(jsc_value_object_get_property(object, name));
    if (!value || !jsc_value_is_string(value.get()))
        return std::nullopt;
    gchar* text = jsc_value_to_string(value.get());
    std::string result = text ? text : "";
    g_free(text);
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
    std::string line;
    line.reserve(prefix.size() + message.size() + 2);
    line.append(prefix).append(" ").append(message).append("\n");
    return line;
}

ArtifactWebView::Coordinator::Coordinator(ArtifactWebView& parent) : parent_{parent} {}

ArtifactWebView::Coordinator::~Coordinator() {
    timeout_.disconnect();
    if (schemeHandler)
        schemeHandler->whenCompiled = nullptr;
    if (webView_)
        g_signal_handlers_disconnect_by_data(webView_.get(), this);
    if (contentManager_) {
        g_signal_handlers_disconnect_by_data(contentManager_.get(), this);
        webkit_user_content_manager_unregister_script_message_handler(contentManager_.get(),
                                                                      jsConsoleChannel, nullptr);
        webkit_user_content_manager_unregister_script_message_handler(
            contentManager_.get(), artifactBridgeChannel, nullptr);
        webkit_user_content_manager_unregister_script_message_handler(contentManager_.get(),
                                                                      storageChannel, nullptr);
        webkit_user_content_manager_unregister_script_message_handler(contentManager_.get(),
                                                                      stylesChannel, nullptr);
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
    g_signal_connect(contentManager, "script-message-with-reply-received::kelmoStorage",
                     G_CALLBACK(onStorageMessage), this);
    webkit_user_content_manager_register_script_message_handler_with_reply(contentManager,
                                                                           storageChannel, nullptr);
}

void ArtifactWebView::Coordinator::follow(WebKitWebView* webView) {
    webView_ = GObjectRef<WebKitWebView>::retain(webView);
    g_signal_connect(webView, "load-changed", G_CALLBACK(onLoadChanged), this);
    g_signal_connect(webView, "load-failed", G_CALLBACK(onLoadFailed), this);
}

void ArtifactWebView::Coordinator::loadIfNeeded(const Artifact& artifact, const Uuid& reloadToken,
                                                WebKitWebView* webView) {
    std::string key = artifact.id.toString() + "-" + reloadToken.toString();
    if (key == lastLoadKey_)
        return;
    lastLoadKey_ = std::move(key);
    load(artifact, webView);
}

void ArtifactWebView::Coordinator::load(const Artifact& artifact, WebKitWebView* webView) {
    parent_.setIsLoading(true);
    timeout_.disconnect();
    timedOut_ = false;

    const std::filesystem::path url{artifact.type.url};
    if (storage)
        storage->setArtifact(url);
    if (artifact.type.kind == ArtifactType::Kind::html) {
        if (fileSchemeHandler)
            fileSchemeHandler->setRoot(url.parent_path());
        webkit_web_view_load_uri(webView,
                                 ArtifactFileSchemeHandler::urlFor(url.filename()).c_str());
        return;
    }

    auto code = readWholeFile(url);
    if (!code || !isValidUtf8(*code)) {
        parent_.setIsLoading(false);
        parent_.setErrorMessage(couldNotReadFile);
        return;
    }
    if (schemeHandler) {
        // Requests of the page being replaced get what there is; their page is leaving.
        answerWaitingRequests();
        compileJob_.reset();
        schemeHandler->compiledArtifact.reset();
        schemeHandler->whenCompiled = nullptr;
        schemeHandler->compileKey = stylesCache ? stylesCache->keyFor(*code) : std::string{};
        schemeHandler->tailwindStyles =
            stylesCache ? stylesCache->lookup(schemeHandler->compileKey) : std::nullopt;
        compileOnTheSide(*code);
        schemeHandler->artifactCode = std::move(*code);
    }
    webkit_web_view_load_uri(webView, std::string{artifactPlayerUrl}.c_str());
    startTimeout(webView);
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
// one here: when it runs out, the load is stopped and reported as failed.
void ArtifactWebView::Coordinator::startTimeout(WebKitWebView* webView) {
    timeout_ = Glib::signal_timeout().connect(
        [this, webView] {
            timedOut_ = true;
            webkit_web_view_stop_loading(webView);
            parent_.setIsLoading(false);
            parent_.setErrorMessage(requestTimedOut);
            return false;
        },
        static_cast<unsigned>(loadTimeout.count()));
}

void ArtifactWebView::Coordinator::didStartProvisionalNavigation() {
    // A load whose time-out came before WebKit began it found nothing to stop then; it
    // is stopped now and stays reported as timed out.
    if (timedOut_) {
        webkit_web_view_stop_loading(webView_.get());
        return;
    }
    parent_.setIsLoading(true);
}

void ArtifactWebView::Coordinator::didFinish() {
    timeout_.disconnect();
    // WebKit also ends a stopped or failed load with "finished".
    if (std::exchange(timedOut_, false))
        return;
    parent_.setIsLoading(false);
}

void ArtifactWebView::Coordinator::didFail(const GError* error) {
    timeout_.disconnect();
    // A load stopped by its time-out has already been reported as such.
    if (timedOut_)
        return;
    parent_.setIsLoading(false);
    parent_.setErrorMessage(error && error->message ? error->message : "");
}

void ArtifactWebView::Coordinator::didReceive(std::string_view channel, JSCValue* body) {
    if (channel != jsConsoleChannel)
        return;
    if (!body || !jsc_value_is_object(body) || jsc_value_is_array(body) ||
        jsc_value_is_function(body))
        return;
    const auto level = stringProperty(body, "level");
    const auto message = stringProperty(body, "message");
    if (!level || !message)
        return;
    const std::string line = consoleLine(*level, *message);
    std::fwrite(line.data(), 1, line.size(), stdout);
    std::fflush(stdout);
}

// A request from window.storage: {operation, key, value, prefix, shared}. Answers
// get with the value or null, set with true, delete with whether the key was there
// and list with the matching keys.
void ArtifactWebView::Coordinator::answerStorageRequest(JSCValue* request,
                                                        WebKitScriptMessageReply* reply) {
    if (!storage || !request || !jsc_value_is_object(request)) {
        webkit_script_message_reply_return_error_message(reply, "Storage is not available");
        return;
    }
    JSCContext* context = jsc_value_get_context(request);
    const auto operation = stringProperty(request, "operation").value_or("");
    const auto key = stringProperty(request, "key").value_or("");
    const bool shared = booleanProperty(request, "shared");
    GObjectRef<JSCValue> answer;
    if (operation == "get") {
        const auto value = storage->get(key, shared);
        answer = GObjectRef<JSCValue>::adopt(value ? jsc_value_new_string(context, value->c_str())
                                                   : jsc_value_new_null(context));
    } else if (operation == "set") {
        const auto value = stringProperty(request, "value");
        if (!value) {
            webkit_script_message_reply_return_error_message(reply, "The value must be a string");
            return;
        }
        storage->set(key, *value, shared);
        answer = GObjectRef<JSCValue>::adopt(jsc_value_new_boolean(context, TRUE));
    } else if (operation == "delete") {
        answer = GObjectRef<JSCValue>::adopt(
            jsc_value_new_boolean(context, storage->remove(key, shared)));
    } else if (operation == "list") {
        const auto keys = storage->list(stringProperty(request, "prefix").value_or(""), shared);
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
    if (!stylesCache || !schemeHandler || schemeHandler->tailwindStyles || !body ||
        !jsc_value_is_object(body))
        return;
    const auto key = stringProperty(body, "key");
    auto styles = stringProperty(body, "styles");
    if (!key || key->empty() || *key != schemeHandler->compileKey || !styles)
        return;
    stylesCache->store(*key, *styles);
    schemeHandler->tailwindStyles = std::move(styles);
}

void ArtifactWebView::Coordinator::onLoadChanged(WebKitWebView*, WebKitLoadEvent event,
                                                 gpointer self) {
    auto* coordinator = static_cast<Coordinator*>(self);
    if (event == WEBKIT_LOAD_STARTED)
        coordinator->didStartProvisionalNavigation();
    else if (event == WEBKIT_LOAD_FINISHED)
        coordinator->didFinish();
}

gboolean ArtifactWebView::Coordinator::onLoadFailed(WebKitWebView*, WebKitLoadEvent, gchar*,
                                                    GError* error, gpointer self) {
    static_cast<Coordinator*>(self)->didFail(error);
    // Handled: the view keeps what it showed instead of WebKit's error page.
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

gboolean ArtifactWebView::Coordinator::onStorageMessage(WebKitUserContentManager*,
                                                        JSCValue* request,
                                                        WebKitScriptMessageReply* reply,
                                                        gpointer self) {
    static_cast<Coordinator*>(self)->answerStorageRequest(request, reply);
    return TRUE;
}

} // namespace kelmo
