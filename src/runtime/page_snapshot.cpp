#include "runtime/page_snapshot.h"

#include <memory>

namespace kelmo::page_snapshot {
namespace {

using Done = std::function<void(Glib::RefPtr<Gdk::Texture>, std::optional<std::string>)>;

void snapshotTaken(GObject* source, GAsyncResult* result, gpointer data) {
    std::unique_ptr<Done> done{static_cast<Done*>(data)};
    GError* error = nullptr;
    GdkTexture* texture =
        webkit_web_view_get_snapshot_finish(WEBKIT_WEB_VIEW(source), result, &error);
    if (!texture) {
        (*done)({}, std::string{"The page could not be drawn: "} +
                        (error ? error->message : "no picture"));
        g_clear_error(&error);
        return;
    }
    (*done)(Glib::wrap(texture), std::nullopt);
}

void take(WebKitWebView* webView, WebKitSnapshotRegion region, Done done) {
    webkit_web_view_get_snapshot(webView, region, WEBKIT_SNAPSHOT_OPTIONS_NONE, nullptr,
                                 snapshotTaken, new Done{std::move(done)});
}

} // namespace

void takeVisible(WebKitWebView* webView, Done done) {
    take(webView, WEBKIT_SNAPSHOT_REGION_VISIBLE, std::move(done));
}

void saveAsPng(WebKitWebView* webView, std::filesystem::path file,
               std::function<void(std::optional<std::string>)> done) {
    take(webView, WEBKIT_SNAPSHOT_REGION_FULL_DOCUMENT,
         [file = std::move(file), done = std::move(done)](Glib::RefPtr<Gdk::Texture> texture,
                                                          std::optional<std::string> problem) {
             if (!texture) {
                 done(problem);
                 return;
             }
             if (gdk_texture_save_to_png(texture->gobj(), file.c_str()))
                 done(std::nullopt);
             else
                 done("Could not write " + file.string());
         });
}

} // namespace kelmo::page_snapshot
