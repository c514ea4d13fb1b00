#include "PageServer.h"

#include <array>
#include <string_view>

namespace bench {
namespace {

constexpr std::string_view page = "<!doctype html><html><head><meta charset=utf-8><title>A page</title>"
                                  "<style>html{background:#c0178a;color:white}</style></head>"
                                  "<body><h1>A page</h1><p>With a line of text.</p></body></html>";

std::string answerTo(std::string_view request)
{
    const auto isPage = request.starts_with("GET / ");
    const auto body = isPage ? page : std::string_view();
    return std::string(isPage ? "HTTP/1.1 200 OK" : "HTTP/1.1 404 Not Found")
        + "\r\nContent-Type: text/html; charset=utf-8\r\nCache-Control: no-store\r\nConnection: "
          "close\r\nContent-Length: "
        + std::to_string(body.size()) + "\r\n\r\n" + std::string(body);
}

gboolean serve(GThreadedSocketService*, GSocketConnection* connection, GObject*, gpointer)
{
    std::string request;
    std::array<char, 4096> buffer {};
    while (request.find("\r\n\r\n") == std::string::npos) {
        const auto length = g_input_stream_read(
            g_io_stream_get_input_stream(G_IO_STREAM(connection)), buffer.data(), buffer.size(), nullptr, nullptr);
        if (length <= 0)
            return TRUE;
        request.append(buffer.data(), static_cast<std::size_t>(length));
    }
    const auto answer = answerTo(request);
    g_output_stream_write_all(g_io_stream_get_output_stream(G_IO_STREAM(connection)), answer.data(), answer.size(),
        nullptr, nullptr, nullptr);
    return TRUE;
}

} // namespace

PageServer::PageServer()
    : service_(g_threaded_socket_service_new(8))
{
    auto* loopback = g_inet_address_new_loopback(G_SOCKET_FAMILY_IPV4);
    auto* wanted = g_inet_socket_address_new(loopback, 0);
    GSocketAddress* given = nullptr;
    g_socket_listener_add_address(
        G_SOCKET_LISTENER(service_), wanted, G_SOCKET_TYPE_STREAM, G_SOCKET_PROTOCOL_TCP, nullptr, &given, nullptr);
    port_ = g_inet_socket_address_get_port(G_INET_SOCKET_ADDRESS(given));
    g_object_unref(given);
    g_object_unref(wanted);
    g_object_unref(loopback);
    g_signal_connect(service_, "run", G_CALLBACK(serve), nullptr);
    g_socket_service_start(service_);
}

PageServer::~PageServer()
{
    g_socket_service_stop(service_);
    g_object_unref(service_);
}

} // namespace bench
