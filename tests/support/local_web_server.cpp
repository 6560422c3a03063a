#include "local_web_server.h"

#include <gtest/gtest.h>

namespace kelmo::testing {

LocalWebServer::LocalWebServer(std::string page)
    : page_{std::move(page)}, service_{g_socket_service_new()} {
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
    g_signal_handlers_disconnect_by_data(service_, this);
    g_socket_service_stop(service_);
    g_socket_listener_close(G_SOCKET_LISTENER(service_));
    g_object_unref(service_);
}

std::string LocalWebServer::url(const std::string& path) const {
    return "http://127.0.0.1:" + std::to_string(port_) + path;
}

// The request line is all it reads; the client sends it at once.
gboolean LocalWebServer::onIncoming(GSocketService*, GSocketConnection* connection, GObject*,
                                    gpointer self) {
    auto* server = static_cast<LocalWebServer*>(self);
    char buffer[4096];
    const gssize read = g_input_stream_read(g_io_stream_get_input_stream(G_IO_STREAM(connection)),
                                            buffer, sizeof buffer, nullptr, nullptr);
    const std::string request{buffer, read > 0 ? static_cast<std::size_t>(read) : 0};
    const auto start = request.find(' ');
    const auto end = request.find(' ', start + 1);
    if (start != std::string::npos && end != std::string::npos)
        server->requested.push_back(request.substr(start + 1, end - start - 1));
    const std::string answer = "HTTP/1.0 200 OK\r\nContent-Type: text/html\r\nContent-Length: " +
                               std::to_string(server->page_.size()) +
                               "\r\nConnection: close\r\n\r\n" + server->page_;
    g_output_stream_write_all(g_io_stream_get_output_stream(G_IO_STREAM(connection)),
                              answer.data(), answer.size(), nullptr, nullptr, nullptr);
    g_io_stream_close(G_IO_STREAM(connection), nullptr, nullptr);
    return TRUE;
}

} // namespace kelmo::testing
