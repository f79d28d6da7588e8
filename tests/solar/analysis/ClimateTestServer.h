// A local HTTP server on 127.0.0.1 for the climate tests: set the handlers,
// start() serves them on a free port from a thread, the destructor stops it.
#pragma once

#include <arpa/inet.h>
#include <httplib.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <chrono>
#include <string>
#include <thread>

class LocalHttpServer {
public:
    ~LocalHttpServer() {
        if (!thread_.joinable()) return;
        server_.stop();
        thread_.join();
    }
    httplib::Server& server() { return server_; }
    // Binds a free port and waits, at most 5 s, until it serves.
    bool start() {
        port_ = server_.bind_to_any_port("127.0.0.1");
        if (port_ <= 0) return false;
        thread_ = std::thread([this] { server_.listen_after_bind(); });
        for (int i = 0; i < 500 && !server_.is_running(); ++i) std::this_thread::sleep_for(std::chrono::milliseconds(10));
        return server_.is_running();
    }
    std::string base() const { return "http://127.0.0.1:" + std::to_string(port_) + "/"; }

private:
    httplib::Server server_;
    std::thread thread_;
    int port_ = 0;
};

// A base address where nothing listens: a port taken and given back.
inline std::string UnusedLocalBase() {
    const int s = socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t length = sizeof address;
    bind(s, reinterpret_cast<sockaddr*>(&address), sizeof address);
    getsockname(s, reinterpret_cast<sockaddr*>(&address), &length);
    close(s);
    return "http://127.0.0.1:" + std::to_string(ntohs(address.sin_port)) + "/";
}
