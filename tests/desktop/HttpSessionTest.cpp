#include "platform/desktop/QtHttpSession.h"

#include "desktop/EventLoop.h"
#include "desktop/LocalServer.h"
#include "support/TemporaryFolder.h"

#include <QFile>
#include <QProcess>
#include <QSslCertificate>
#include <QSslConfiguration>
#include <QSslKey>
#include <QSslServer>
#include <QTimer>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <optional>

namespace orvalen::test {
namespace {

using namespace std::chrono_literals;
using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

HttpRequest get(const std::string& address) {
    HttpRequest request;
    request.address = address;
    return request;
}

HttpRequest post(const std::string& address) {
    HttpRequest request = get(address);
    request.method = "POST";
    request.headers = {{"Content-Type", "text/plain"}, {"Authorization", "Basic secret"}};
    request.body = "to the end";
    return request;
}

class HttpSessionTest : public testing::Test {
protected:
    /// Sends the request and runs the event loop until the answer arrives.
    Expected<HttpResponse> send(const HttpRequest& request) {
        std::optional<Expected<HttpResponse>> answer;
        session->send(request, [&](Expected<HttpResponse> response) { answer = std::move(response); });
        EXPECT_FALSE(answer) << "an answer arrives after the call";
        EXPECT_TRUE(turnUntil([&] { return answer.has_value(); }, 60s)) << request.address;
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
    const std::string path = "/x/a:b%2520?fields=items(track(name,artists(name)))&limit=100";
    server.on(path, answer(200, ""));
    HttpRequest fresh = get(server.address(path));
    fresh.cachePolicy = CachePolicy::reloadIgnoringCache;
    for (const HttpRequest& request : {get(server.address(path)), post(server.address(path)), fresh})
        EXPECT_EQ(bodyOf(request), "");
    ASSERT_EQ(server.requests.size(), 3U);
    EXPECT_THAT(server.requests[0], StartsWith("GET " + path + " HTTP/1.1\r\n"));
    EXPECT_THAT(server.requests[0], Not(HasSubstr("Cache-Control")));
    EXPECT_THAT(server.requests[1],
                AllOf(StartsWith("POST " + path + " HTTP/1.1\r\n"),
                      HasSubstr("\r\nContent-Type: text/plain\r\n"),
                      HasSubstr("\r\nAuthorization: Basic secret\r\n"), EndsWith("\r\n\r\nto the end")));
    EXPECT_THAT(server.requests[2], HasSubstr("\r\nCache-Control: no-cache\r\n"));
}

TEST_F(HttpSessionTest, ReturnsTheBodyOfEveryFinalStatus) {
    for (const int status : {200, 302, 304, 400, 401, 404, 500, 599}) {
        const QByteArray body = status == 304 ? "" : "{\"status\":" + QByteArray::number(status) + "}";
        server.on("/x", answer(status, body, status == 401 ? "WWW-Authenticate: Basic realm=\"x\"\r\n" : ""));
        const auto response = send(post(server.address("/x")));
        ASSERT_TRUE(response) << status << ": " << response.error().description;
        EXPECT_EQ(response->status, status);
        EXPECT_EQ(response->body, body.toStdString());
    }
}

TEST_F(HttpSessionTest, ReturnsAnyBytesUpToItsLimit) {
    const QByteArray most(64 << 20, 'x');
    for (const QByteArray& body : {QByteArray("\0\xFF\xC3\r\n\x80 <html>", 13), most}) {
        server.on("/x", answer(200, body));
        EXPECT_TRUE(bodyOf(get(server.address("/x"))) == body.toStdString()) << body.size();
    }
    server.on("/x", answer(200, most + "x"));
    EXPECT_EQ(errorOf(get(server.address("/x"))), "The answer is too large.");
    // This body shrinks to a thousandth of its size. By default, Qt refuses to decompress such a body.
    server.on("/x", answer(200, qCompress(most).mid(4), "Content-Encoding: deflate\r\n"));
    EXPECT_TRUE(bodyOf(get(server.address("/x"))) == most.toStdString());
}

TEST_F(HttpSessionTest, SendsARequestOnceAndReturnsOnlyAWholeAnswer) {
    const QByteArray cut = "HTTP/1.1 200 OK\r\nContent-Length: 1000\r\n\r\n";
    const struct {
        QByteArray sent;
        std::string error; ///< empty: the answer is "ok"
    } cases[] = {
        {"", "The connection was closed without an answer."},
        {cut, "Connection closed"},
        {cut + "{\"items\":[", "Connection closed"},
        {"HTTP/1.1 199 Other\r\nContent-Length: 2\r\n\r\nno", "The server sent no final answer."},
        {"HTTP/1.1 100 Continue\r\n\r\n" + answer(200, "ok"), ""},
    };
    for (const auto& c : cases)
        for (const auto& make : {get, post}) {
            SCOPED_TRACE(c.sent.toStdString());
            LocalServer asked;
            asked.on("/x", c.sent);
            if (c.error.empty())
                EXPECT_EQ(bodyOf(make(asked.address("/x"))), "ok");
            else
                EXPECT_EQ(errorOf(make(asked.address("/x"))), c.error);
            turnFor(50ms);
            EXPECT_EQ(asked.requests.size(), 1U);
        }
    const std::string gone = LocalServer().address();
    EXPECT_NE(errorOf(get(gone)), "");
}

TEST_F(HttpSessionTest, TimesOutOnlyAfterSilence) {
    server.on("/stops", [](QTcpSocket& socket) { socket.write(answer(200, "xx").chopped(1)); });
    for (const char* path : {"/silent", "/stops"}) {
        HttpRequest request = get(server.address(path));
        request.timeout = 200ms;
        const auto start = std::chrono::steady_clock::now();
        EXPECT_EQ(errorOf(request), "The request timed out.") << path;
        EXPECT_GE(std::chrono::steady_clock::now() - start, 200ms) << path;
    }
    server.on("/slow", [](QTcpSocket& socket) {
        auto* timer = new QTimer(&socket);
        QObject::connect(timer, &QTimer::timeout, &socket,
                         [&socket, rest = answer(200, std::string(14, 'x').c_str())]() mutable {
                             const qsizetype sent = rest.startsWith('H') ? rest.size() - 14 : 1;
                             socket.write(rest.first(sent));
                             rest.remove(0, sent);
                         });
        timer->start(200);
    });
    HttpRequest request = get(server.address("/slow"));
    request.timeout = 2s; // shorter than the transfer of the whole answer
    EXPECT_EQ(bodyOf(request), std::string(14, 'x'));
}

TEST_F(HttpSessionTest, RefusesInvalidRequests) {
    for (const char* address : {"", "/latest.json", "http:///x", "http://127.0.0.1/a b", "http://127.0.0.1/%",
                                "http://127.0.0.1:x/", "file:///etc/hostname", "data:,x"})
        EXPECT_EQ(errorOf(get(address)), "The address is not valid.") << address;
    HttpRequest request = get(server.address("/x"));
    request.headers = {{"Authorization", "Bearer a\nX-Other: b"}};
    EXPECT_EQ(errorOf(request), "A header of the request is not valid.");
}

TEST_F(HttpSessionTest, NeverAnswersAfterItsEnd) {
    bool answered = false;
    session->send(get(server.address("/silent")), [&](const Expected<HttpResponse>&) { answered = true; });
    EXPECT_TRUE(turnUntil([&] { return server.requests.size() == 1; }));
    session.reset();
    turnFor(50ms);
    EXPECT_FALSE(answered);
}

TEST_F(HttpSessionTest, FollowsRedirects) {
    server.on("/target?q=1", answer(200, ""));
    for (const int status : {301, 302, 303, 307, 308}) {
        server.on("/moved", redirection(status, "target?q=1"));
        for (const HttpRequest& request : {get(server.address("/moved")), post(server.address("/moved"))}) {
            EXPECT_EQ(bodyOf(request), "") << status;
            const bool stays = request.method == "GET" || status >= 307;
            const std::string last = server.requests.back();
            EXPECT_THAT(last, StartsWith((stays ? request.method : "GET") + " /target?q=1 ")) << status;
            EXPECT_EQ(last.ends_with("to the end"), request.method == "POST" && stays) << status;
            EXPECT_EQ(last.find("text/plain") != std::string::npos, request.method == "POST" && stays);
            EXPECT_EQ(last.find("secret") != std::string::npos, request.method == "POST") << status;
        }
    }
    LocalServer other;
    other.on("/x", answer(200, ""));
    server.on("/moved", redirection(307, other.address("/x")));
    EXPECT_EQ(bodyOf(post(server.address("/moved"))), "");
    EXPECT_THAT(other.requests.back(), Not(HasSubstr("secret"))) << "another server";
    server.on("/loop", redirection(302, "/loop"));
    EXPECT_EQ(errorOf(get(server.address("/loop"))), "The server redirected too often.");
    server.on("/moved", redirection(302, "file:///etc/hostname"));
    EXPECT_EQ(errorOf(get(server.address("/moved"))),
              "The server redirected to an address that is not safe.");
}

TEST_F(HttpSessionTest, TrustsOnlyASignedCertificateAndFollowsNoRedirectAwayFromIt) {
    const TemporaryFolder folder;
    const QString certificateFile = QString::fromStdString(folder.path("certificate.pem"));
    QFile key(QString::fromStdString(folder.path("key.pem")));
    ASSERT_EQ(QProcess::execute("openssl", {"req", "-x509", "-newkey", "ec", "-pkeyopt",
                                            "ec_paramgen_curve:P-256", "-nodes", "-days", "2", "-subj",
                                            "/CN=127.0.0.1", "-addext", "subjectAltName=IP:127.0.0.1",
                                            "-keyout", key.fileName(), "-out", certificateFile}),
              0);
    ASSERT_TRUE(key.open(QIODevice::ReadOnly));
    const QList<QSslCertificate> certificates = QSslCertificate::fromPath(certificateFile);
    QSslConfiguration own;
    own.setLocalCertificateChain(certificates);
    own.setPrivateKey(QSslKey(&key, QSsl::Ec));
    auto encrypting = std::make_unique<QSslServer>();
    encrypting->setSslConfiguration(own);
    LocalServer secure(std::move(encrypting), "https");
    secure.on("/x", answer(200, "secret"));
    EXPECT_THAT(errorOf(get(secure.address("/x"))), HasSubstr("certificate"));
    session.emplace(); // a session does not reload certificates

    const QSslConfiguration usual = QSslConfiguration::defaultConfiguration();
    QSslConfiguration trusting = usual;
    trusting.addCaCertificates(certificates);
    QSslConfiguration::setDefaultConfiguration(trusting);
    server.on("/up", redirection(302, secure.address("/x")));
    secure.on("/down", redirection(302, server.address("/plain")));
    EXPECT_EQ(bodyOf(get(server.address("/up"))), "secret");
    EXPECT_EQ(errorOf(get(secure.address("/down"))), "The server redirected to an address that is not safe.");
    QSslConfiguration::setDefaultConfiguration(usual);
}

} // namespace
} // namespace orvalen::test
