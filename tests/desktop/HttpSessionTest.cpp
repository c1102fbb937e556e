#include "platform/desktop/QtHttpSession.h"

#include "desktop/EventLoop.h"
#include "desktop/LocalServer.h"

#include <QSslCertificate>
#include <QSslConfiguration>
#include <QTcpServer>
#include <QTcpSocket>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <optional>

namespace orvalen::test {
namespace {

using namespace std::chrono_literals;
using testing::HasSubstr;
using testing::Not;

HttpRequest get(const std::string& address) {
    HttpRequest request;
    request.address = address;
    return request;
}

HttpRequest post(const std::string& address, const std::string& body) {
    HttpRequest request = get(address);
    request.method = "POST";
    request.headers = {{"Content-Type", "text/plain"}, {"Authorization", "Basic secret"}};
    request.body = body;
    return request;
}

/// Answers with the request that reached the server.
void describe(const httplib::Request& request, httplib::Response& response) {
    response.set_content(request.method + " " + request.target + "\n" +
                             request.get_header_value("Authorization") + "\n" +
                             request.get_header_value("Content-Type") + "\n" +
                             request.get_header_value("Cache-Control") + "\n" + request.body,
                         "text/plain");
}

class HttpSessionTest : public testing::Test {
protected:
    /// Sends the request and runs the event loop until the answer arrives.
    Expected<HttpResponse> send(const HttpRequest& request) {
        std::optional<Expected<HttpResponse>> answer;
        session->send(request, [&](Expected<HttpResponse> response) { answer = std::move(response); });
        EXPECT_TRUE(turnUntil([&] { return answer.has_value(); }, 30s)) << request.address;
        return answer.value_or(failure("no answer"));
    }
    std::string bodyOf(const HttpRequest& request) {
        const auto response = send(request);
        EXPECT_TRUE(response) << response.error().description;
        return response ? response->body : "";
    }
    std::string errorOf(const HttpRequest& request) {
        const auto response = send(request);
        EXPECT_FALSE(response) << response->status;
        return response ? "" : response.error().description;
    }

    LocalServer server;
    std::optional<QtHttpSession> session{std::in_place};
};

TEST_F(HttpSessionTest, SendsTheRequestAsItIs) {
    server.on("/x/a:b", describe);
    server.on("/a%20b", describe);
    const std::string path = "/x/a:b?fields=items(track(name,artists(name)))&limit=100";
    EXPECT_EQ(bodyOf(get(server.address(path))), "GET " + path + "\n\n\n\n");
    EXPECT_EQ(bodyOf(post(server.address(path), "a=b\n")),
              "POST " + path + "\nBasic secret\ntext/plain\n\na=b\n");
    HttpRequest fresh = get(server.address(path));
    fresh.cachePolicy = CachePolicy::reloadIgnoringCache;
    EXPECT_EQ(bodyOf(fresh), "GET " + path + "\n\n\nno-cache\n");
    EXPECT_THAT(bodyOf(get(server.address("/a%2520b"))), HasSubstr("GET /a%2520b\n"));
}

TEST_F(HttpSessionTest, GivesTheBodyWhateverTheStatus) {
    for (const int status : {200, 302, 304, 400, 401, 404, 500, 599}) {
        const std::string body = status == 304 ? "" : "{\"status\":" + std::to_string(status) + "}";
        const std::string path = "/" + std::to_string(status);
        server.on(path, [=](const httplib::Request&, httplib::Response& response) {
            response.status = status;
            if (status == 401)
                response.set_header("WWW-Authenticate", "Basic realm=\"api\"");
            if (!body.empty())
                response.set_content(body, "application/json");
        });
        const auto response = send(post(server.address(path), "x"));
        ASSERT_TRUE(response) << status << ": " << response.error().description;
        EXPECT_EQ(response->status, status);
        EXPECT_EQ(response->body, body);
    }
}

TEST_F(HttpSessionTest, GivesAnyBytesUpToItsLimit) {
    const struct {
        const char* path;
        std::string body;
        const char* type;
    } bodies[] = {
        {"/bytes", std::string("\0\xFF\xC3\r\n\x80 <html>", 13), "application/octet-stream"},
        {"/large", "start" + std::string(50'000'000, 'x') + "end", "application/octet-stream"},
        {"/packed", std::string(12'000'000, 'x'),
         "application/json"}, // sent compressed to a thousandth of its size
    };
    for (const auto& each : bodies) {
        server.on(each.path, 200, each.body, each.type);
        EXPECT_TRUE(bodyOf(get(server.address(each.path))) == each.body) << each.path;
    }
    server.on("/endless", [](const httplib::Request&, httplib::Response& response) {
        response.set_chunked_content_provider("application/octet-stream",
                                              [](std::size_t, httplib::DataSink& sink) {
                                                  static const std::string chunk(1'000'000, 'x');
                                                  return sink.write(chunk.data(), chunk.size());
                                              });
    });
    EXPECT_EQ(errorOf(get(server.address("/endless"))), "The answer is too large.");
}

TEST_F(HttpSessionTest, GivesOneErrorForAServerThatIsNotThereOrGoesAway) {
    server.closeInTheMiddle("/json", R"({"items":[)");
    server.closeInTheMiddle("/nothing", "");
    for (const std::string& address :
         {server.address("/json"), server.address("/nothing"), LocalServer().address()})
        EXPECT_NE(errorOf(get(address)), "") << address;
}

/// A server that sends fixed bytes when a request arrives, and closes the connection.
class RawServer : public QTcpServer {
public:
    explicit RawServer(QByteArray answer) : answer_(std::move(answer)) {
        EXPECT_TRUE(listen(QHostAddress::LocalHost));
        connect(this, &QTcpServer::newConnection, this, [this] {
            QTcpSocket* socket = nextPendingConnection();
            connect(socket, &QTcpSocket::readyRead, this, [this, socket, request = QByteArray()]() mutable {
                request += socket->readAll();
                if (!request.endsWith("\r\n\r\n") && !request.endsWith("end"))
                    return;
                ++requests;
                socket->write(answer_);
                socket->disconnectFromHost();
            });
        });
    }
    std::string address() const { return "http://127.0.0.1:" + std::to_string(serverPort()) + "/x"; }

    int requests = 0;

private:
    const QByteArray answer_;
};

TEST_F(HttpSessionTest, SendsARequestOnceAndTakesOnlyAFinalStatusForAnAnswer) {
    const struct {
        QByteArray sent;
        std::string error; ///< empty: the answer is "ok"
    } cases[] = {
        {"", "The connection was closed without an answer."},
        {"HTTP/1.1 199 Other\r\nContent-Length: 2\r\n\r\nno", "The server sent no final answer."},
        {"HTTP/1.1 100 Continue\r\n\r\nHTTP/1.1 200 OK\r\nContent-Length: 2\r\n\r\nok", ""},
    };
    for (const auto& c : cases)
        for (const bool posts : {true, false}) {
            SCOPED_TRACE(c.sent.toStdString() + (posts ? " POST" : " GET"));
            RawServer raw(c.sent);
            const HttpRequest request = posts ? post(raw.address(), "to the end") : get(raw.address());
            if (c.error.empty())
                EXPECT_EQ(bodyOf(request), "ok");
            else
                EXPECT_EQ(errorOf(request), c.error);
            turnFor(100ms);
            EXPECT_EQ(raw.requests, 1);
        }
}

TEST_F(HttpSessionTest, TimesOutOnSilenceOnly) {
    const auto sendBytes = [&](const char* path, std::chrono::milliseconds apart, std::size_t count) {
        server.on(path, [=](const httplib::Request&, httplib::Response& response) {
            response.set_content_provider(count, "text/plain",
                                          [=](std::size_t offset, std::size_t, httplib::DataSink& sink) {
                                              if (offset > 0)
                                                  std::this_thread::sleep_for(apart);
                                              return sink.write("x", 1);
                                          });
        });
    };
    server.neverAnswer("/silent");
    sendBytes("/stops", 1s, 2);
    for (const char* path : {"/silent", "/stops"}) {
        HttpRequest request = get(server.address(path));
        request.timeout = 200ms;
        const auto start = std::chrono::steady_clock::now();
        EXPECT_EQ(errorOf(request), "The request timed out.") << path;
        EXPECT_GE(std::chrono::steady_clock::now() - start, 200ms) << path;
    }
    sendBytes("/slow", 200ms, 10);
    HttpRequest request = get(server.address("/slow"));
    request.timeout = 1500ms; // shorter than the transfer of the whole answer
    EXPECT_EQ(bodyOf(request), "xxxxxxxxxx");
}

TEST_F(HttpSessionTest, RefusesInvalidRequests) {
    for (const char* address : {"", "/latest.json", "http:///x", "http://127.0.0.1/a b", "http://127.0.0.1/%",
                                "http://127.0.0.1:x/", "file:///etc/hostname", "data:,x"})
        EXPECT_EQ(errorOf(get(address)), "The address is not valid.") << address;
    HttpRequest request = get(server.address("/x"));
    request.headers = {{"Authorization", "Bearer a\nX-Other: b"}};
    EXPECT_EQ(errorOf(request), "A header of the request is not valid.");
}

TEST_F(HttpSessionTest, AnswersLaterAndOnceAndNeverAfterItsEnd) {
    server.on("/x", 200, "x");
    for (const std::string& address : {server.address("/x"), std::string("no address")}) {
        int answers = 0;
        session->send(get(address), [&](const Expected<HttpResponse>&) { ++answers; });
        EXPECT_EQ(answers, 0) << address;
        ASSERT_TRUE(turnUntil([&] { return answers > 0; }, 30s));
        turnFor(50ms);
        EXPECT_EQ(answers, 1) << address;
    }
    server.neverAnswer("/silent");
    bool answered = false;
    {
        QtHttpSession other;
        other.send(get(server.address("/silent")), [&](const Expected<HttpResponse>&) { answered = true; });
        turnFor(100ms);
    }
    turnFor(100ms);
    EXPECT_FALSE(answered);
}

TEST_F(HttpSessionTest, FollowsRedirects) {
    server.on("/target", describe);
    for (const int status : {301, 302, 303, 307, 308}) {
        const std::string path = "/" + std::to_string(status);
        server.redirect(path, status, "target?q=1");
        EXPECT_THAT(bodyOf(get(server.address(path))), HasSubstr("GET /target?q=1\n")) << status;
        EXPECT_EQ(bodyOf(post(server.address(path), "x")),
                  status < 307 ? "GET /target?q=1\nBasic secret\n\n\n"
                               : "POST /target?q=1\nBasic secret\ntext/plain\n\nx")
            << status;
    }
    LocalServer other;
    other.on("/target", describe);
    server.redirect("/away", 307, other.address("/target"));
    EXPECT_THAT(bodyOf(post(server.address("/away"), "x")), Not(HasSubstr("secret"))) << "another server";
    server.redirect("/loop", 302, "/loop");
    EXPECT_EQ(errorOf(get(server.address("/loop"))), "The server redirected too often.");
    server.redirect("/file", 302, "file:///etc/hostname");
    EXPECT_EQ(errorOf(get(server.address("/file"))), "The server redirected to an address that is not safe.");
}

TEST_F(HttpSessionTest, TrustsOnlyASignedCertificateAndIsNeverLedAwayFromIt) {
    const SelfSignedCertificate certificate;
    LocalServer secure{certificate};
    secure.on("/x", 200, "secret");
    EXPECT_THAT(errorOf(get(secure.address("/x"))), HasSubstr("certificate"));
    session.emplace(); // a session does not reload certificates

    const QSslConfiguration usual = QSslConfiguration::defaultConfiguration();
    QSslConfiguration trusting = usual;
    trusting.addCaCertificates(
        QSslCertificate::fromPath(QString::fromStdString(certificate.certificateFile())));
    QSslConfiguration::setDefaultConfiguration(trusting);
    server.on("/plain", 200, "plain");
    server.redirect("/up", 302, secure.address("/x"));
    secure.redirect("/down", 302, server.address("/plain"));
    EXPECT_EQ(bodyOf(get(server.address("/up"))), "secret");
    EXPECT_EQ(errorOf(get(secure.address("/down"))), "The server redirected to an address that is not safe.");
    QSslConfiguration::setDefaultConfiguration(usual);
}

} // namespace
} // namespace orvalen::test
