#pragma once

#include <gio/gio.h>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace kelmo::testing {

// A web server on 127.0.0.1 that answers every request with the same HTML page, or
// with the routes given (and 404 for any other path), and records the paths asked
// for. It answers from the main loop.
class LocalWebServer {
public:
    struct Response {
        std::string type;
        std::string body;
    };

    explicit LocalWebServer(std::string page);
    // A server of routes only; route() adds them (they may need the server's URL).
    LocalWebServer();
    void route(const std::string& path, Response response);
    ~LocalWebServer();
    LocalWebServer(const LocalWebServer&) = delete;
    LocalWebServer& operator=(const LocalWebServer&) = delete;

    // "http://127.0.0.1:<port>" and the path.
    std::string url(const std::string& path) const;

    std::vector<std::string> requested;

private:
    static gboolean onIncoming(GSocketService*, GSocketConnection* connection, GObject*,
                               gpointer self);

    std::string page_;
    std::optional<std::map<std::string, Response>> routes_;
    GSocketService* service_;
    GCancellable* cancellable_; // ends the reads still waiting when the server goes
    guint16 port_ = 0;
};

} // namespace kelmo::testing
