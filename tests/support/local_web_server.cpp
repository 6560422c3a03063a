#include "local_web_server.h"

#include <gtest/gtest.h>
#include <memory>

namespace kelmo::testing {

LocalWebServer::LocalWebServer() : LocalWebServer{std::string{}} {
    routes_.emplace();
}

void LocalWebServer::route(const std::string& path, Response response) {
    if (!routes_)
        routes_.emplace();
    routes_->insert_or_assign(path, std::move(response));
}

LocalWebServer::LocalWebServer(std::string page)
    : page_{std::move(page)}, service_{g_socket_service_new()}, cancellable_{g_cancellable_new()} {
    GInetAddress* loopback = g_inet_address_new_loopback(G_SOCKET_FAMILY_IPV4);
    GSocketAddress* address = g_inet_socket_address_new(loopback, 0);
    GSocketAddress* bound = nullptr;
    if (!g_socket_listener_add_address(G_SOCKET_LISTENER(service_), address, G_SOCKET_TYPE_STREAM,
                                       G_SOCKET_PROTOCOL_TCP, nullptr, &bound, nullptr))
        ADD_FAILURE() << "the test server could not listen on 127.0.0.1";
    if (bound)
        port_ = g_inet_socket_address_get_port(G_INET_SOCKET_ADDRESS(bound));
    g_clear_object(&bound);
    g_object_unref(address);
    g_object_unref(loopback);
    g_signal_connect(service_, "incoming", G_CALLBACK(onIncoming), this);
    g_socket_service_start(service_);
}

LocalWebServer::~LocalWebServer() {
    g_cancellable_cancel(cancellable_);
    g_object_unref(cancellable_);
    g_signal_handlers_disconnect_by_data(service_, this);
    g_socket_service_stop(service_);
    g_socket_listener_close(G_SOCKET_LISTENER(service_));
    g_object_unref(service_);
}

std::string LocalWebServer::url(const std::string& path) const {
    return "http://127.0.0.1:" + std::to_string(port_) + path;
}

namespace {

struct Exchange {
    LocalWebServer* server;
    GSocketConnection* connection;
    std::string page;
    char buffer[4096];
};

} // namespace

// Reads without blocking: a client may open a connection ahead of any request
// (WebKit preconnects) and send nothing on it.
gboolean LocalWebServer::onIncoming(GSocketService*, GSocketConnection* connection, GObject*,
                                    gpointer self) {
    auto* exchange = new Exchange{static_cast<LocalWebServer*>(self),
                                  G_SOCKET_CONNECTION(g_object_ref(connection)),
                                  static_cast<LocalWebServer*>(self)->page_,
                                  {}};
    g_input_stream_read_async(
        g_io_stream_get_input_stream(G_IO_STREAM(connection)), exchange->buffer,
        sizeof exchange->buffer, G_PRIORITY_DEFAULT, exchange->server->cancellable_,
        [](GObject* stream, GAsyncResult* result, gpointer data) {
            std::unique_ptr<Exchange> exchange{static_cast<Exchange*>(data)};
            GError* error = nullptr;
            const gssize read = g_input_stream_read_finish(G_INPUT_STREAM(stream), result, &error);
            // Cancelled: the server is gone.
            const bool serverGone = g_error_matches(error, G_IO_ERROR, G_IO_ERROR_CANCELLED);
            g_clear_error(&error);
            if (serverGone) {
                g_object_unref(exchange->connection);
                return;
            }
            const std::string request{exchange->buffer,
                                      read > 0 ? static_cast<std::size_t>(read) : 0};
            const auto start = request.find(' ');
            const auto end = request.find(' ', start + 1);
            std::string path;
            if (start != std::string::npos && end != std::string::npos)
                path = request.substr(start + 1, end - start - 1);
            exchange->server->requested.push_back(path);
            std::string status = "200 OK";
            Response response{"text/html", exchange->page};
            if (const auto& routes = exchange->server->routes_) {
                const auto found = routes->find(path);
                if (found != routes->end())
                    response = found->second;
                else
                    status = "404 Not Found", response = {"application/json", "{}"};
            }
            const std::string answer =
                "HTTP/1.0 " + status + "\r\nContent-Type: " + response.type +
                "\r\nContent-Length: " + std::to_string(response.body.size()) +
                "\r\nConnection: close\r\n\r\n" + response.body;
            GIOStream* io = G_IO_STREAM(exchange->connection);
            if (read > 0)
                g_output_stream_write_all(g_io_stream_get_output_stream(io), answer.data(),
                                          answer.size(), nullptr, nullptr, nullptr);
            g_io_stream_close(io, nullptr, nullptr);
            g_object_unref(exchange->connection);
        },
        exchange);
    return TRUE;
}

} // namespace kelmo::testing
