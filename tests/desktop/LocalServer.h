#pragma once

#include <QByteArray>
#include <QTcpServer>
#include <QTcpSocket>
#include <functional>
#include <gtest/gtest.h>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace orvalen::test {

/// A server on a free port of 127.0.0.1. It runs in the event loop of the test, keeps every request, and
/// answers it by its path and query. The body of a POST request must end with "end".
class LocalServer {
public:
    using Answer = std::function<void(QTcpSocket&)>;

    explicit LocalServer(std::unique_ptr<QTcpServer> server = std::make_unique<QTcpServer>(),
                         const char* scheme = "http")
        : server_(std::move(server)), scheme_(scheme) {
        EXPECT_TRUE(server_->listen(QHostAddress::LocalHost));
        QObject::connect(server_.get(), &QTcpServer::pendingConnectionAvailable, server_.get(), [this] {
            QTcpSocket* socket = server_->nextPendingConnection();
            const auto readOn = [this, socket, request = QByteArray()]() mutable {
                request += socket->readAll();
                if (!request.endsWith(request.startsWith("POST") ? "end" : "\r\n\r\n"))
                    return;
                requests.push_back(request.toStdString());
                if (const Answer& answer = answers_[request.split(' ').value(1).toStdString()])
                    answer(*socket);
            };
            QObject::connect(socket, &QTcpSocket::readyRead, socket, readOn);
        });
    }

    /// Sets the answer to a path. Requests for other paths are never answered.
    void on(const std::string& path, Answer answer) { answers_[path] = std::move(answer); }
    /// Sends these bytes and closes the connection.
    void on(const std::string& path, const QByteArray& bytes) {
        on(path, [bytes](QTcpSocket& socket) {
            socket.write(bytes);
            socket.disconnectFromHost();
        });
    }

    std::string address(const std::string& path = {}) const {
        return std::string(scheme_) + "://127.0.0.1:" + std::to_string(server_->serverPort()) + path;
    }

    std::vector<std::string> requests;

private:
    std::unique_ptr<QTcpServer> server_;
    const char* scheme_;
    std::map<std::string, Answer> answers_;
};

/// Returns the bytes of an answer with this body.
inline QByteArray answer(int status, const QByteArray& body, const QByteArray& headers = {}) {
    return "HTTP/1.1 " + QByteArray::number(status) +
           " Text\r\nConnection: close\r\nContent-Length: " + QByteArray::number(body.size()) + "\r\n" +
           headers + "\r\n" + body;
}

inline QByteArray redirection(int status, const std::string& target) {
    return answer(status, "moved", "Location: " + QByteArray::fromStdString(target) + "\r\n");
}

} // namespace orvalen::test
