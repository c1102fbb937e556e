#include "platform/desktop/QtHttpSession.h"

#include "desktop/Awaiting.h"
#include "desktop/LocalServer.h"

#include <QSslCertificate>
#include <QSslConfiguration>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

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

/// Says what reached the server.
void describe(const httplib::Request& request, httplib::Response& response) {
    response.set_content(request.method + " " + request.target + "\n" +
                             request.get_header_value("Authorization") + "\n" +
                             request.get_header_value("Content-Type") + "\n" +
                             request.get_header_value("Cache-Control") + "\n" + request.body,
                         "text/plain");
}

class HttpSessionTest : public testing::Test {
protected:
    Expected<HttpResponse> send(const HttpRequest& request) { return await(session, request); }
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
    QtHttpSession session;
};

TEST_F(HttpSessionTest, SendsTheRequestAsItIs) {
    server.on("/x/a:b", describe);
    const std::string path = "/x/a:b?fields=items(track(name,artists(name)))&limit=100";
    EXPECT_EQ(bodyOf(get(server.address(path))), "GET " + path + "\n\n\n\n");
    EXPECT_EQ(bodyOf(post(server.address(path), "a=b\n")),
              "POST " + path + "\nBasic secret\ntext/plain\n\na=b\n");
    HttpRequest fresh = get(server.address(path));
    fresh.cachePolicy = CachePolicy::reloadIgnoringCache;
    EXPECT_EQ(bodyOf(fresh), "GET " + path + "\n\n\nno-cache\n");
    server.on("/a%2520b/tracks", describe);
    server.on("/a%20b/tracks", describe);
    EXPECT_THAT(bodyOf(get(server.address("/a%2520b/tracks"))), HasSubstr("GET /a%2520b/tracks\n"));
}

TEST_F(HttpSessionTest, GivesTheBodyWhateverTheStatus) {
    for (const int status :
         {200, 201, 203, 300, 302, 304, 400, 401, 403, 404, 409, 418, 429, 500, 502, 503, 599}) {
        const std::string body = status == 304 ? "" : "{\"status\":" + std::to_string(status) + "}";
        const std::string path = "/" + std::to_string(status);
        server.on(path, [=](const httplib::Request&, httplib::Response& response) {
            response.status = status;
            if (status == 401)
                response.set_header("WWW-Authenticate", "Basic realm=\"api\"");
            if (!body.empty())
                response.set_content(body, "application/json");
        });
        for (const HttpRequest& request : {get(server.address(path)), post(server.address(path), "x")}) {
            const auto response = send(request);
            ASSERT_TRUE(response) << status << ": " << response.error().description;
            EXPECT_EQ(response->status, status);
            EXPECT_EQ(response->body, body);
        }
    }
}

TEST_F(HttpSessionTest, GivesAnyBytes) {
    const std::string bytes("\0\xFF\xC3\r\n\x80 <html>", 13);
    server.on("/bytes", 200, bytes, "application/octet-stream");
    EXPECT_EQ(bodyOf(get(server.address("/bytes"))), bytes);
    server.on("/none", 200, "");
    EXPECT_EQ(bodyOf(get(server.address("/none"))), "");
    const std::string large = "start" + std::string(50'000'000, 'x') + "end";
    server.on("/large", 200, large, "application/octet-stream");
    EXPECT_TRUE(bodyOf(get(server.address("/large"))) == large);
    const std::string packed(12'000'000, 'x'); // JSON is sent compressed, this to a thousandth
    server.on("/packed", 200, packed);
    EXPECT_TRUE(bodyOf(get(server.address("/packed"))) == packed);
}

TEST_F(HttpSessionTest, StopsAnAnswerWithoutEnd) {
    server.on("/endless", [](const httplib::Request&, httplib::Response& response) {
        response.set_chunked_content_provider("application/octet-stream",
                                              [](std::size_t, httplib::DataSink& sink) {
                                                  static const std::string chunk(1'000'000, 'x');
                                                  return sink.write(chunk.data(), chunk.size());
                                              });
    });
    EXPECT_EQ(errorOf(get(server.address("/endless"))), "The answer is too large.");
}

TEST_F(HttpSessionTest, FailsWhenTheServerClosesInTheMiddle) {
    server.closeInTheMiddle("/json", R"({"items":[)");
    server.closeInTheMiddle("/nothing", "");
    for (const char* path : {"/json", "/nothing"})
        EXPECT_NE(errorOf(get(server.address(path))), "") << path;
}

TEST_F(HttpSessionTest, TimesOutOnASilentServer) {
    server.neverAnswer("/silent");
    HttpRequest request = get(server.address("/silent"));
    request.timeout = 200ms;
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(errorOf(request), "The request timed out.");
    EXPECT_GE(std::chrono::steady_clock::now() - start, 200ms);
    EXPECT_LT(std::chrono::steady_clock::now() - start, 5s);
}

TEST_F(HttpSessionTest, TimesOutWhenAnAnswerStops) {
    server.on("/stops", [](const httplib::Request&, httplib::Response& response) {
        response.set_content_provider(100, "text/plain",
                                      [](std::size_t offset, std::size_t, httplib::DataSink& sink) {
                                          if (offset > 0)
                                              std::this_thread::sleep_for(1s);
                                          return offset == 0 && sink.write("x", 1);
                                      });
    });
    HttpRequest request = get(server.address("/stops"));
    request.timeout = 200ms;
    EXPECT_EQ(errorOf(request), "The request timed out.");
}

TEST_F(HttpSessionTest, WaitsForASlowServerAsLongAsItSpeaks) {
    server.on("/slow", [](const httplib::Request&, httplib::Response& response) {
        response.set_content_provider(10, "text/plain",
                                      [](std::size_t, std::size_t, httplib::DataSink& sink) {
                                          std::this_thread::sleep_for(200ms);
                                          return sink.write("x", 1);
                                      });
    });
    HttpRequest request = get(server.address("/slow"));
    request.timeout = 1500ms;
    EXPECT_EQ(bodyOf(request), "xxxxxxxxxx");
}

TEST_F(HttpSessionTest, RefusesAnAddressThatIsNoneOnTheWeb) {
    for (const char* address : {"", "no address", "/latest.json", "http://", "http:///x", "http://a b/",
                                "http://127.0.0.1/a b", "http://127.0.0.1/%", "http://127.0.0.1:x/",
                                "file:///etc/hostname", "data:,x", "qrc:/x", "ftp://127.0.0.1/x"})
        EXPECT_EQ(errorOf(get(address)), "The address is not valid.") << address;
}

TEST_F(HttpSessionTest, RefusesAHeaderThatWouldBecomeTwo) {
    server.on("/x", 200, "");
    for (const char* value : {"Bearer a\r\nX-Other: b", "Bearer a\nb"}) {
        HttpRequest request = get(server.address("/x"));
        request.headers = {{"Authorization", value}};
        EXPECT_EQ(errorOf(request), "A header of the request is not valid.");
    }
}

TEST_F(HttpSessionTest, TellsThatNobodyListens) {
    std::string address;
    {
        const LocalServer gone;
        address = gone.address("/x");
    }
    EXPECT_NE(errorOf(get(address)), "");
}

TEST_F(HttpSessionTest, AnswersLaterOnceAndOnItsOwnThread) {
    server.on("/x", 200, "x");
    const auto thread = std::this_thread::get_id();
    int answers = 0;
    for (const std::string& address : {server.address("/x"), std::string("no address")}) {
        answers = 0;
        session.send(get(address), [&](const Expected<HttpResponse>&) {
            ++answers;
            EXPECT_EQ(std::this_thread::get_id(), thread);
        });
        EXPECT_EQ(answers, 0) << address;
        ASSERT_TRUE(turnUntil([&] { return answers > 0; }, 30s));
        turnFor(50ms);
        EXPECT_EQ(answers, 1) << address;
    }
}

TEST_F(HttpSessionTest, AnswersEachOfManyRequests) {
    server.on("/a", 200, "a");
    server.on("/b", 200, "b");
    std::string bodies;
    for (int i = 0; i < 20; ++i)
        session.send(
            get(server.address(i % 2 == 0 ? "/a" : "/b")),
            [&](const Expected<HttpResponse>& response) { bodies += response ? response->body : "!"; });
    ASSERT_TRUE(turnUntil([&] { return bodies.size() == 20; }, 30s));
    EXPECT_EQ(std::count(bodies.begin(), bodies.end(), 'a'), 10);
    EXPECT_EQ(std::count(bodies.begin(), bodies.end(), 'b'), 10);
}

TEST_F(HttpSessionTest, MayEndWithARequestOpen) {
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
    struct Case {
        int status;
        const char *method, *body;
    };
    server.on("/target", describe);
    for (const auto& [status, method, body] :
         {Case{301, "GET", ""}, {302, "GET", ""}, {303, "GET", ""}, {307, "POST", "x"}, {308, "POST", "x"}}) {
        const std::string path = "/" + std::to_string(status);
        server.redirect(path, status, "target?q=1");
        EXPECT_THAT(bodyOf(get(server.address(path))), HasSubstr("GET /target?q=1\n")) << status;
        const std::string kind = std::string(method) == "POST" ? "text/plain" : "";
        EXPECT_EQ(bodyOf(post(server.address(path), "x")),
                  std::string(method) + " /target?q=1\nBasic secret\n" + kind + "\n\n" + body)
            << status;
    }
}

TEST_F(HttpSessionTest, LeavesTheAuthorizationBehindOnTheWayToAnotherServer) {
    LocalServer other;
    other.on("/target", describe);
    for (const int status : {302, 307}) {
        const std::string path = "/" + std::to_string(status);
        server.redirect(path, status, other.address("/target"));
        EXPECT_THAT(bodyOf(post(server.address(path), "x")), Not(HasSubstr("secret"))) << status;
    }
}

TEST_F(HttpSessionTest, FollowsNoRedirectToNowhere) {
    server.redirect("/loop", 302, "/loop");
    EXPECT_EQ(errorOf(get(server.address("/loop"))), "The server redirected too often.");
    server.redirect("/file", 302, "file:///etc/hostname");
    server.redirect("/data", 302, "data:,x");
    for (const char* path : {"/file", "/data"})
        EXPECT_EQ(errorOf(get(server.address(path))),
                  "The server redirected to an address that is not safe.");
}

class HttpsTest : public HttpSessionTest {
protected:
    HttpsTest() { secure.on("/x", 200, "secret"); }
    ~HttpsTest() override { QSslConfiguration::setDefaultConfiguration(usual); }

    void trustTheServer() {
        QSslConfiguration trusting = usual;
        const auto certificates =
            QSslCertificate::fromPath(QString::fromStdString(certificate.certificateFile()));
        ASSERT_FALSE(certificates.isEmpty());
        trusting.addCaCertificates(certificates);
        QSslConfiguration::setDefaultConfiguration(trusting);
    }

    const QSslConfiguration usual = QSslConfiguration::defaultConfiguration();
    const SelfSignedCertificate certificate;
    LocalServer secure{certificate};
};

TEST_F(HttpsTest, RefusesACertificateThatNobodyTrusts) {
    EXPECT_THAT(errorOf(get(secure.address("/x"))), HasSubstr("certificate"));
}

TEST_F(HttpsTest, AcceptsATrustedCertificateForItsOwnHostOnly) {
    trustTheServer();
    EXPECT_EQ(bodyOf(get(secure.address("/x"))), "secret");
    std::string elsewhere = secure.address("/x");
    elsewhere.replace(elsewhere.find("127.0.0.1"), 9, "localhost");
    EXPECT_THAT(errorOf(get(elsewhere)), HasSubstr("host name"));
}

TEST_F(HttpsTest, IsNeverLeftByARedirect) {
    trustTheServer();
    server.on("/plain", 200, "plain");
    server.redirect("/up", 302, secure.address("/x"));
    secure.redirect("/down", 302, server.address("/plain"));
    EXPECT_EQ(bodyOf(get(server.address("/up"))), "secret");
    EXPECT_EQ(errorOf(get(secure.address("/down"))), "The server redirected to an address that is not safe.");
}

TEST_F(HttpsTest, IsNotSpokenByAPlainServer) {
    std::string address = server.address("/x");
    address.replace(0, 4, "https");
    EXPECT_NE(errorOf(get(address)), "");
}

} // namespace
} // namespace orvalen::test
