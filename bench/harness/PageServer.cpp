#include "PageServer.h"

#include "Pages.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace bench {
namespace {

std::string answerTo(std::string_view request)
{
    const auto target = request.substr(0, request.find(" HTTP/"));
    const auto address = target.substr(std::min(target.size(), std::string_view("GET ").size()));
    const auto resource = resourceAt(address);
    const auto answer = resource.value_or(Resource { "text/plain", "" });
    return std::string(resource ? "HTTP/1.1 200 OK" : "HTTP/1.1 404 Not Found") + "\r\nContent-Type: " + answer.type
        + "\r\nCache-Control: no-store\r\nConnection: close\r\nContent-Length: " + std::to_string(answer.body.size())
        + "\r\n\r\n" + answer.body;
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
