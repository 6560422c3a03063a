#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <webkit/webkit.h>

namespace kelmo {

// A picture of a page as WebKit draws it: the whole document, at the width the page is
// laid out in.
namespace page_snapshot {

// Saves the picture as a PNG file; `done` gets nothing on success, or why it failed.
// Answers on the main context, after the page has been drawn.
void saveAsPng(WebKitWebView* webView, std::filesystem::path file,
               std::function<void(std::optional<std::string> problem)> done);

} // namespace page_snapshot
} // namespace kelmo
