#include "runtime/web_view_schemes.h"

#include "runtime/gobject_ref.h"

#include <libsoup/soup.h>
#include <memory>
#include <string>

namespace kelmo {

namespace {

constexpr char handlersKey[] = "kelmo-scheme-handlers";
constexpr char registeredKey[] = "kelmo-artifact-schemes-registered";

GObjectRef<GInputStream> streamOf(std::string body) {
    auto* owned = new std::string{std::move(body)};
    GBytes* bytes = g_bytes_new_with_free_func(
        owned->data(), owned->size(), [](gpointer data) { delete static_cast<std::string*>(data); },
        owned);
    auto stream = GObjectRef<GInputStream>::adopt(g_memory_input_stream_new_from_bytes(bytes));
    g_bytes_unref(bytes);
    return stream;
}

void fail(WebKitURISchemeRequest* request, SchemeError error) {
    GError* failure = g_error_new_literal(artifactSchemeErrorQuark(), static_cast<int>(error),
                                          std::string{describe(error)}.c_str());
    webkit_uri_scheme_request_finish_error(request, failure);
    g_error_free(failure);
}

void respond(WebKitURISchemeRequest* request, const SchemeResult& result, bool artifactHeaders) {
    if (const auto* error = std::get_if<SchemeError>(&result)) {
        fail(request, *error);
        return;
    }
    const auto& answer = std::get<SchemeResponse>(result);
    const auto length = static_cast<gint64>(answer.body.size());
    auto response = GObjectRef<WebKitURISchemeResponse>::adopt(
        webkit_uri_scheme_response_new(streamOf(answer.body).get(), length));
    webkit_uri_scheme_response_set_status(response.get(), 200, nullptr);

    SoupMessageHeaders* headers = soup_message_headers_new(SOUP_MESSAGE_HEADERS_RESPONSE);
    if (artifactHeaders) {
        for (const auto& [name, value] : headerFields(answer))
            soup_message_headers_append(headers, name.c_str(), value.c_str());
        webkit_uri_scheme_response_set_content_type(response.get(),
                                                    (answer.mimeType + "; charset=utf-8").c_str());
    } else {
        soup_message_headers_append(headers, "Content-Type", answer.mimeType.c_str());
        soup_message_headers_append(headers, "Content-Length", std::to_string(length).c_str());
        // An artifact's own files change as it is edited: a reload reads them anew.
        soup_message_headers_append(headers, "Cache-Control", "no-store");
        webkit_uri_scheme_response_set_content_type(response.get(), answer.mimeType.c_str());
    }
    // The response takes over the headers.
    webkit_uri_scheme_response_set_http_headers(response.get(), headers);
    webkit_uri_scheme_request_finish_with_response(request, response.get());
}

// Holds the request until the compile on the side has ended, then answers it as then
// resolved.
void answerAfterCompile(WebKitURISchemeRequest* request,
                        const std::shared_ptr<ArtifactSchemeHandler>& handler, std::string uri) {
    std::shared_ptr<WebKitURISchemeRequest> held{
        static_cast<WebKitURISchemeRequest*>(g_object_ref(request)), g_object_unref};
    handler->whenCompiled([handler, held, uri = std::move(uri)] {
        respond(held.get(), handler->resolve(uri), true);
    });
}

void handleRequest(WebKitURISchemeRequest* request, gpointer) {
    const char* uri = webkit_uri_scheme_request_get_uri(request);
    if (!uri) {
        fail(request, SchemeError::badURL);
        return;
    }
    WebKitWebView* webView = webkit_uri_scheme_request_get_web_view(request);
    const auto* handlers = webView ? static_cast<const WebViewSchemeHandlers*>(
                                         g_object_get_data(G_OBJECT(webView), handlersKey))
                                   : nullptr;
    const std::string_view scheme = webkit_uri_scheme_request_get_scheme(request);
    if (handlers && handlers->artifact && scheme == artifactScheme) {
        if (handlers->artifact->answersLater(uri))
            answerAfterCompile(request, handlers->artifact, uri);
        else
            respond(request, handlers->artifact->resolve(uri), true);
    } else if (handlers && handlers->file && scheme == artifactFileScheme)
        respond(request, handlers->file->resolve(uri), false);
    else
        fail(request, SchemeError::fileDoesNotExist);
}

} // namespace

void registerArtifactSchemes(WebKitWebContext* context) {
    if (g_object_get_data(G_OBJECT(context), registeredKey))
        return;
    g_object_set_data(G_OBJECT(context), registeredKey, GINT_TO_POINTER(1));
    WebKitSecurityManager* security = webkit_web_context_get_security_manager(context);
    for (const std::string& scheme :
         {std::string{artifactScheme}, std::string{artifactFileScheme}}) {
        webkit_web_context_register_uri_scheme(context, scheme.c_str(), handleRequest, nullptr,
                                               nullptr);
        webkit_security_manager_register_uri_scheme_as_secure(security, scheme.c_str());
        webkit_security_manager_register_uri_scheme_as_cors_enabled(security, scheme.c_str());
    }
}

void attachSchemeHandlers(WebKitWebView* webView, WebViewSchemeHandlers handlers) {
    g_object_set_data_full(G_OBJECT(webView), handlersKey,
                           new WebViewSchemeHandlers{std::move(handlers)},
                           [](gpointer data) { delete static_cast<WebViewSchemeHandlers*>(data); });
}

void detachSchemeHandlers(WebKitWebView* webView) {
    g_object_set_data(G_OBJECT(webView), handlersKey, nullptr);
}

GQuark artifactSchemeErrorQuark() {
    return g_quark_from_static_string("kelmo-artifact-scheme");
}

std::string_view describe(SchemeError error) {
    switch (error) {
    case SchemeError::badURL:
        return "Bad URL";
    case SchemeError::fileDoesNotExist:
        return "File does not exist";
    }
    return "File does not exist";
}

} // namespace kelmo
