#pragma once

#include "support/TemporaryFolder.h"

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <functional>
#include <httplib.h>
#include <memory>
#include <stdexcept>
#include <string>
#include <thread>

namespace orvalen::test {

/// A key with a self-signed certificate for 127.0.0.1.
class SelfSignedCertificate {
public:
    SelfSignedCertificate() {
        const std::string command =
            "openssl req -x509 -newkey ec -pkeyopt ec_paramgen_curve:P-256 -nodes -days 2 "
            "-subj /CN=127.0.0.1 -addext subjectAltName=IP:127.0.0.1 -keyout '" +
            keyFile() + "' -out '" + certificateFile() + "' 2>/dev/null";
        if (std::system(command.c_str()) != 0)
            throw std::runtime_error("no certificate could be made: is openssl installed?");
    }
    std::string certificateFile() const { return folder_.path("certificate.pem"); }
    std::string keyFile() const { return folder_.path("key.pem"); }

private:
    TemporaryFolder folder_;
};

/// A real HTTP server on a free port of 127.0.0.1. Its handlers run on their own threads. A handler that
/// blocks does so until the server ends.
class LocalServer {
public:
    using Handler = std::function<void(const httplib::Request&, httplib::Response&)>;

    LocalServer() : LocalServer(std::make_unique<httplib::Server>(), "http") {}
    explicit LocalServer(const SelfSignedCertificate& certificate)
        : LocalServer(std::make_unique<httplib::SSLServer>(certificate.certificateFile().c_str(),
                                                           certificate.keyFile().c_str()),
                      "https") {}
    ~LocalServer() {
        ending_ = true;
        server_->stop();
        thread_.join();
    }
    LocalServer(const LocalServer&) = delete;
    LocalServer& operator=(const LocalServer&) = delete;

    /// Answers all methods on this path. Call before the first request to the path.
    void on(const std::string& path, const Handler& handler) {
        server_->Get(path, handler);
        server_->Post(path, handler);
    }
    void on(const std::string& path, int status, const std::string& body,
            const std::string& type = "application/json") {
        on(path, [=](const httplib::Request&, httplib::Response& response) {
            response.status = status;
            response.set_content(body, type);
        });
    }
    void redirect(const std::string& path, int status, const std::string& target) {
        on(path, [=](const httplib::Request&, httplib::Response& response) {
            response.status = status;
            response.set_header("Location", target);
            response.set_content("moved", "text/plain");
        });
    }
    /// Announces a body of 1 MB, sends only `start`, and closes the connection.
    void closeInTheMiddle(const std::string& path, const std::string& start) {
        on(path, [=](const httplib::Request&, httplib::Response& response) {
            response.set_content_provider(
                1'000'000, "application/json", [=](std::size_t offset, std::size_t, httplib::DataSink& sink) {
                    return offset < start.size() && sink.write(start.data(), start.size());
                });
        });
    }
    void neverAnswer(const std::string& path) {
        on(path, [this](const httplib::Request&, httplib::Response&) {
            while (!ending_)
                std::this_thread::sleep_for(std::chrono::milliseconds(10));
        });
    }

    std::string address(const std::string& path = {}) const {
        return std::string(scheme_) + "://127.0.0.1:" + std::to_string(port_) + path;
    }

private:
    LocalServer(std::unique_ptr<httplib::Server> server, const char* scheme)
        : server_(std::move(server)), scheme_(scheme), port_(server_->bind_to_any_port("127.0.0.1")) {
        if (port_ <= 0)
            throw std::runtime_error("no server could be started");
        server_->set_keep_alive_timeout(1);
        thread_ = std::thread([this] { server_->listen_after_bind(); });
        while (!server_->is_running())
            std::this_thread::yield();
    }

    std::unique_ptr<httplib::Server> server_;
    const char* scheme_;
    int port_;
    std::atomic<bool> ending_{false};
    std::thread thread_;
};

} // namespace orvalen::test
