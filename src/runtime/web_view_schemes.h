#pragma once

#include "runtime/artifact_file_scheme_handler.h"
#include "runtime/artifact_scheme_handler.h"

#include <glib.h>
#include <memory>
#include <string_view>
#include <webkit/webkit.h>

namespace kelmo {

// The handlers that answer one web view's requests on the "artifact" and
// "artifact-file" schemes.
struct WebViewSchemeHandlers {
    std::shared_ptr<ArtifactSchemeHandler> artifact;
    std::shared_ptr<ArtifactFileSchemeHandler> file;
};

// WebKit registers URL schemes per web context, not per web view. Both schemes are
// registered once on a context, together with their security-manager flags (secure,
// so pages on them are secure contexts, and CORS-enabled, so they may fetch and load
// modules), and each request is answered by the handlers attached to the web view
// that made it. A request from a view without handlers finds nothing.
void registerArtifactSchemes(WebKitWebContext* context);

// Attaches handlers to a view until detached or the view is finalized.
void attachSchemeHandlers(WebKitWebView* webView, WebViewSchemeHandlers handlers);
void detachSchemeHandlers(WebKitWebView* webView);

// Failed requests carry an error in this domain, coded by SchemeError, whose message
// is describe(error).
GQuark artifactSchemeErrorQuark();
std::string_view describe(SchemeError error);

} // namespace kelmo
