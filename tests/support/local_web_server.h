#pragma once

#include <gio/gio.h>
#include <string>
#include <vector>

namespace kelmo::testing {

// A web server on 127.0.0.1 that answers every request with the same HTML page and
// records the paths asked for. It answers from the main loop.
class LocalWebServer {
public:
    explicit LocalWebServer(std::string page);
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
    GSocketService* service_;
    GCancellable* cancellable_; // ends the reads still waiting when the server goes
    guint16 port_ = 0;
};

} // namespace kelmo::testing
