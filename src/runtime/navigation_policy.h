#pragma once

#include <string>
#include <string_view>

namespace kelmo {

// What becomes of a navigation that a page asks for.
enum class NavigationVerdict {
    allow,         // let the web view go on
    refuse,        // stay where it is
    openInBrowser, // a web page the user clicked: the user's browser shows it instead
    runAgain,      // the player page asked for itself again: run the artifact afresh
};

struct NavigationRequest {
    std::string_view uri;
    bool newWindow = false;   // a link with a target of its own, or window.open
    bool linkClicked = false; // a link followed (not a script, a form or a reload)
    bool userGesture = false; // during a click or a key press of the user's
    bool reload = false;      // location.reload() and the like
};

// The navigation rules of a running artifact: it may move within its own origin and
// nowhere else. Its web view asks at two stages. Every navigation, of the top frame or
// of a frame (the engine does not say which), comes to decide(), which lets frames go
// their way but keeps new windows out and sends clicked web links to the browser. A
// top-frame navigation that got through comes to admitsTopFrameResponse() once its
// answer arrives, and leaves the origin only if it is the load the application began.
// Free of WebKit.
class NavigationPolicy {
public:
    // The page of the load the application begins now: "artifact://<host>/" for the
    // player (which can only run afresh: its page is served once per load), or an
    // HTML artifact's page (which may go to other pages of its origin).
    void beginLoad(std::string pageUrl, bool isPlayer);
    // No page: nothing but the application's next load is admitted.
    void clear();

    NavigationVerdict decide(const NavigationRequest& request);
    bool admitsTopFrameResponse(std::string_view uri) const;

    // "scheme://host/" of an absolute URL; empty when it has no host.
    static std::string originOf(std::string_view uri);
    static bool isWebPage(std::string_view uri);

private:
    bool isInsideOrigin(std::string_view uri) const;

    std::string page_;
    std::string origin_;
    bool isPlayer_ = false;
    // The application's own load, until the engine has asked about it.
    std::string expected_;
};

} // namespace kelmo
