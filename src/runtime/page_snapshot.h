#pragma once

#include <filesystem>
#include <functional>
#include <gdkmm/texture.h>
#include <optional>
#include <string>
#include <webkit/webkit.h>

namespace kelmo {

// Pictures of a page as WebKit draws it, at the width the page is laid out in. The
// answers come on the main context, after the page has been drawn.
namespace page_snapshot {

// The part on screen, or nothing (and why).
void takeVisible(WebKitWebView* webView,
                 std::function<void(Glib::RefPtr<Gdk::Texture>, std::optional<std::string>)> done);

// The whole document saved as a PNG file; `done` gets nothing on success, or why it
// failed.
void saveAsPng(WebKitWebView* webView, std::filesystem::path file,
               std::function<void(std::optional<std::string> problem)> done);

} // namespace page_snapshot
} // namespace kelmo
