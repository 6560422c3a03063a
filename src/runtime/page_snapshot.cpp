#include "runtime/page_snapshot.h"

#include <memory>

namespace kelmo::page_snapshot {
namespace {

struct Request {
    std::filesystem::path file;
    std::function<void(std::optional<std::string>)> done;
};

void snapshotTaken(GObject* source, GAsyncResult* result, gpointer data) {
    std::unique_ptr<Request> request{static_cast<Request*>(data)};
    GError* error = nullptr;
    GdkTexture* texture =
        webkit_web_view_get_snapshot_finish(WEBKIT_WEB_VIEW(source), result, &error);
    if (!texture) {
        request->done(std::string{"The page could not be drawn: "} +
                      (error ? error->message : "no picture"));
        g_clear_error(&error);
        return;
    }
    const bool saved = gdk_texture_save_to_png(texture, request->file.c_str());
    g_object_unref(texture);
    if (saved)
        request->done(std::nullopt);
    else
        request->done("Could not write " + request->file.string());
}

} // namespace

void saveAsPng(WebKitWebView* webView, std::filesystem::path file,
               std::function<void(std::optional<std::string>)> done) {
    webkit_web_view_get_snapshot(webView, WEBKIT_SNAPSHOT_REGION_FULL_DOCUMENT,
                                 WEBKIT_SNAPSHOT_OPTIONS_NONE, nullptr, snapshotTaken,
                                 new Request{std::move(file), std::move(done)});
}

} // namespace kelmo::page_snapshot
