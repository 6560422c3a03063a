#include "runtime/navigation_policy.h"

#include <glib.h>
#include <memory>

namespace kelmo {

namespace {

std::string_view withoutFragment(std::string_view uri) {
    return uri.substr(0, uri.find('#'));
}

} // namespace

void NavigationPolicy::beginLoad(std::string pageUrl, bool isPlayer) {
    origin_ = originOf(pageUrl);
    expected_ = pageUrl;
    page_ = std::move(pageUrl);
    isPlayer_ = isPlayer;
}

void NavigationPolicy::clear() {
    *this = NavigationPolicy{};
}

NavigationVerdict NavigationPolicy::decide(const NavigationRequest& request) {
    if (request.newWindow)
        return isWebPage(request.uri) && request.userGesture ? NavigationVerdict::openInBrowser
                                                             : NavigationVerdict::refuse;
    if (!expected_.empty() && request.uri == expected_) {
        expected_.clear();
        return NavigationVerdict::allow;
    }
    if (isInsideOrigin(request.uri)) {
        if (!isPlayer_)
            return NavigationVerdict::allow;
        // The player's page, again: a jump within it stays in the page; anything else
        // would ask for a page that is no longer served.
        const bool samePage = withoutFragment(request.uri) == page_;
        if (samePage && request.uri.size() > page_.size() && !request.reload)
            return NavigationVerdict::allow;
        return samePage || request.reload ? NavigationVerdict::runAgain : NavigationVerdict::refuse;
    }
    if (isWebPage(request.uri) && request.linkClicked && request.userGesture)
        return NavigationVerdict::openInBrowser;
    return NavigationVerdict::allow;
}

bool NavigationPolicy::admitsTopFrameResponse(std::string_view uri) const {
    return (!expected_.empty() && uri == expected_) || isInsideOrigin(uri);
}

bool NavigationPolicy::isInsideOrigin(std::string_view uri) const {
    return !origin_.empty() && originOf(uri) == origin_;
}

std::string NavigationPolicy::originOf(std::string_view uri) {
    const std::string text{uri};
    // Left encoded: a path may hold file-name bytes that are not UTF-8.
    std::unique_ptr<GUri, decltype(&g_uri_unref)> parsed{
        g_uri_parse(text.c_str(), G_URI_FLAGS_ENCODED, nullptr), &g_uri_unref};
    if (!parsed || !g_uri_get_host(parsed.get()) || !*g_uri_get_host(parsed.get()))
        return {};
    std::string origin{g_uri_get_scheme(parsed.get())};
    origin.append("://").append(g_uri_get_host(parsed.get()));
    if (const int port = g_uri_get_port(parsed.get()); port != -1)
        origin.append(":").append(std::to_string(port));
    origin.append("/");
    return origin;
}

bool NavigationPolicy::isWebPage(std::string_view uri) {
    const std::string text{uri};
    std::unique_ptr<char, decltype(&g_free)> scheme{g_uri_parse_scheme(text.c_str()), &g_free};
    if (!scheme)
        return false;
    return g_ascii_strcasecmp(scheme.get(), "http") == 0 ||
           g_ascii_strcasecmp(scheme.get(), "https") == 0;
}

} // namespace kelmo
