#pragma once

#include "support/TemporaryFolder.h"

#include <atomic>
#include <functional>
#include <httplib.h>
#include <memory>
#include <string>
#include <thread>

namespace orvalen::test {

/// A key with a certificate for 127.0.0.1 that no authority has signed.
class SelfSignedCertificate {
public:
    SelfSignedCertificate();
    std::string certificateFile() const { return folder_.path("certificate.pem"); }
    std::string keyFile() const { return folder_.path("key.pem"); }

private:
    TemporaryFolder folder_;
};

/// A real HTTP server on a free port of 127.0.0.1, with its own thread. Its handlers run on threads of their
/// own; one that hangs does so until the server ends.
class LocalServer {
public:
    using Handler = std::function<void(const httplib::Request&, httplib::Response&)>;

    LocalServer();
    explicit LocalServer(const SelfSignedCertificate& certificate);
    ~LocalServer();
    LocalServer(const LocalServer&) = delete;
    LocalServer& operator=(const LocalServer&) = delete;

    /// Answers this path, whatever the method. Before the first request to it.
    void on(const std::string& path, const Handler& handler);
    void on(const std::string& path, int status, const std::string& body,
            const std::string& type = "application/json");
    void redirect(const std::string& path, int status, const std::string& target);
    /// Sends so much of a body of a megabyte and then closes the connection.
    void closeInTheMiddle(const std::string& path, const std::string& start);
    void neverAnswer(const std::string& path);

    std::string address(const std::string& path = {}) const;

private:
    explicit LocalServer(std::unique_ptr<httplib::Server> server, const char* scheme);

    std::unique_ptr<httplib::Server> server_;
    const char* scheme_;
    int port_;
    std::atomic<bool> ending_{false};
    std::thread thread_;
};

} // namespace orvalen::test
