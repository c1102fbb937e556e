#include "app/UpdateCheck.h"
#include "core/Base64.h"
#include "desktop/Awaiting.h"
#include "desktop/LocalServer.h"
#include "import/SpotifyImport.h"
#include "platform/desktop/QtHttpSession.h"
#include "support/Builders.h"
#include "support/TestPlatform.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace orvalen::test {
namespace {

using namespace std::chrono_literals;
using testing::AnyOf;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing::SizeIs;
using testing::StartsWith;

constexpr const char* grantedToken = "the-granted-token";

/// The real session, less patient.
class ImpatientSession : public HttpSession {
public:
    void send(const HttpRequest& request, std::function<void(Expected<HttpResponse>)> answer) override {
        HttpRequest shortened = request;
        shortened.timeout = std::min<std::chrono::milliseconds>(request.timeout, patience);
        real_.send(shortened, std::move(answer));
    }

    std::chrono::milliseconds patience = 20s;

private:
    QtHttpSession real_;
};

std::string entry(const std::string& artists, const std::string& title) {
    return R"({"track":{"artists":)" + artists + R"(,"name":")" + title + R"("}})";
}

std::string playlist(const std::string& entries) {
    return R"({"items":[)" + entries + "]}";
}

/// The operations over the real session and a real server; everything else is faked.
class SourcesOverHttp : public testing::Test {
protected:
    SourcesOverHttp() {
        server.on("/api/token", [this](const httplib::Request& request, httplib::Response& response) {
            const std::string credentials = view.spotifyClientID + ":" + view.spotifyClientSecret;
            const bool known = request.method == "POST" && request.body == "grant_type=client_credentials" &&
                               request.get_header_value("Authorization") == "Basic " + base64(credentials);
            response.status = known ? 200 : 400;
            response.set_content(R"({"access_token":")" + std::string(grantedToken) +
                                     R"(","token_type":"Bearer","expires_in":3600})",
                                 "application/json");
        });
        view.isMatching.observe([this] { (view.isMatching.get() ? started : ended) = true; });
        view.inputMode.set(InputMode::spotify);
        view.matchInput.set("typed");
        view.trackDict.set(buildIndex(std::vector{track("Night Band", "Last Train")}));
    }

    /// What the playlist of this identifier answers to someone who has the token.
    void playlistAnswers(const std::string& id, int status, const std::string& body,
                         const std::string& type = "application/json") {
        server.on("/v1/playlists/" + id + "/tracks", [=](const httplib::Request& request,
                                                         httplib::Response& response) {
            const bool allowed =
                request.get_header_value("Authorization") == "Bearer " + std::string(grantedToken) &&
                request.get_param_value("limit") == "100" &&
                request.get_param_value("fields") == "items(track(name,artists(name)))";
            response.status = allowed ? status : 401;
            response.set_content(allowed ? body : "{}", type);
        });
    }

    void import(const std::string& address) { import(address, {server.address(), server.address()}); }
    /// Runs the import to its end, short of the matching that may follow.
    void import(const std::string& address, const SpotifyService& service) {
        test.console.clear();
        started = ended = false;
        importSpotifyPlaylist(view, address, service);
        ASSERT_TRUE(started);
        ASSERT_TRUE(turnUntil([&] { return ended; }, 30s));
    }

    void expectFailed(const std::string& what) {
        EXPECT_THAT(test.console.lines(), Contains(StartsWith("Spotify import error: "))) << what;
        for (const std::string& secret : {std::string(grantedToken), view.spotifyClientSecret,
                                          base64(view.spotifyClientID + ":" + view.spotifyClientSecret)})
            EXPECT_THAT(test.console.lines(), Not(Contains(HasSubstr(secret)))) << what;
        EXPECT_EQ(view.matchInput.get(), "typed") << what;
        EXPECT_EQ(view.inputMode.get(), InputMode::spotify) << what;
        EXPECT_FALSE(view.isMatching.get()) << what;
    }

    /// The console lines of a check against the manifest at this address, once they are complete.
    std::vector<std::string> check(const std::string& current, const std::string& address) {
        test.console.clear();
        checkForUpdates(
            platform, current, [this](LatestInfo info) { found = std::move(info); }, address);
        const auto last = AnyOf("Update available!", "You're up to date.", "Failed to decode update info.",
                                StartsWith("Error fetching update info: "));
        EXPECT_TRUE(turnUntil([&] { return testing::Value(test.console.lines(), Contains(last)); }, 30s));
        test.settle();
        return test.console.lines();
    }

    TestPlatform test;
    ImpatientSession session;
    Platform platform{test.console,     test.mainQueue,     test.matchQueue,   test.tagQueue,
                      test.dialogs,     test.mediaAssets,   test.audioPlayers, test.folderAccess,
                      test.userFolders, test.notifications, session,           test.sound,
                      test.browser,     test.bundle};
    ContentView view{platform, [this]() -> PlaylistDatabaseManager& { return test.database(); }};
    LocalServer server;
    std::optional<LatestInfo> found;
    bool started = false;
    bool ended = false;
};

TEST_F(SourcesOverHttp, ImportAndMatchAPlaylist) {
    playlistAnswers("ID", 200,
                    playlist(entry(R"([{"name":"Night Band"}])", "Last Train") + "," +
                             entry(R"([{"name":"One"},{"name":"Tw\u00f6"}])", "Duet") + "," +
                             entry("[]", "Hum")));
    import(server.address("/intl-de/playlist/ID?si=x"));
    EXPECT_EQ(view.matchInput.get(), "Night Band - Last Train\nOne, Twö - Duet\n - Hum");
    EXPECT_EQ(view.inputMode.get(), InputMode::textList);
    test.settle();
    EXPECT_TRUE(view.showResultsPage.get());
    ASSERT_THAT(view.matchedTracks.get(), SizeIs(2)); // a line without an artist is in no wanted form
    EXPECT_TRUE(view.matchedTracks.get()[0].found);
}

TEST_F(SourcesOverHttp, ImportALargePlaylistAnswer) {
    playlistAnswers("ID", 200,
                    R"({"more":")" + std::string(50'000'000, 'x') + R"(","items":[)" +
                        entry(R"([{"name":"A"}])", "T") + "]}",
                    "application/octet-stream"); // not compressed
    import("ID");
    EXPECT_EQ(view.matchInput.get(), "A - T");
}

TEST_F(SourcesOverHttp, RefusedTokensAreTold) {
    struct Case {
        int status;
        std::string body, told;
    };
    for (const auto& [status, body, told] :
         {Case{400, R"({"error":"invalid_client"})", R"({"error":"invalid_client"})"},
          {401, "", ""},
          {404, "<html>\n</html>", "<html>\n</html>"},
          {429, "Too many requests", "Too many requests"},
          {500, "\xFF\xFE", "<non-text response>"}}) {
        const std::string base = "/" + std::to_string(status);
        server.on(base + "/api/token", status, body);
        import("ID", {server.address(base), server.address()});
        EXPECT_THAT(test.console.lines(),
                    ElementsAre("Spotify token fetch failed, HTTP " + std::to_string(status) + ": " + told,
                                "Spotify import error: HTTP " + std::to_string(status) + ": " + told));
        expectFailed(told);
    }
}

TEST_F(SourcesOverHttp, WhatIsNoTokenOrPlaylistChangesNothing) {
    const std::string good = entry(R"([{"name":"A"}])", "T");
    const std::string bodies[] = {"",
                                  "<html>",
                                  "\xC3(",
                                  "{}",
                                  R"({"error":{"status":404,"message":"Not found"}})",
                                  playlist(good + R"(,{"track":null})"),
                                  playlist(good + R"(,{"track":{"name":"an episode"}})"),
                                  playlist(good + "," + entry("null", "T")),
                                  playlist(good + "," + entry(R"([{"name":"A"}])", "\xC3"))};
    int number = 0;
    for (const std::string& body : bodies) {
        const std::string name = "n" + std::to_string(++number);
        server.on("/" + name + "/api/token", 200, body);
        import("ID", {server.address("/" + name), server.address()});
        expectFailed("token " + body);

        playlistAnswers(name, number % 2 == 0 ? 200 : 404, body);
        import(name);
        EXPECT_THAT(test.console.lines(), SizeIs(1));
        expectFailed("playlist " + body);
    }
}

TEST_F(SourcesOverHttp, BrokenConnectionsChangeNothing) {
    server.closeInTheMiddle("/half/api/token", R"({"access_token":"x")");
    import("ID", {server.address("/half"), server.address()});
    expectFailed("token closed in the middle");
    server.closeInTheMiddle("/v1/playlists/half/tracks", R"({"items":[)");
    import("half");
    expectFailed("playlist closed in the middle");
    server.on("/v1/playlists/chunks/tracks", [](const httplib::Request&, httplib::Response& response) {
        response.set_chunked_content_provider("text/plain", [](std::size_t offset, httplib::DataSink& sink) {
            const std::string start = R"({"items":[)";
            return offset == 0 && sink.write(start.data(), start.size());
        });
    });
    import("chunks");
    expectFailed("playlist closed before its last chunk");
    EXPECT_THAT(check("1.0", server.address("/half/api/token")),
                ElementsAre(StartsWith("Error fetching update info: ")));

    session.patience = 200ms;
    server.neverAnswer("/silent/api/token");
    import("ID", {server.address("/silent"), server.address()});
    EXPECT_THAT(test.console.lines(), ElementsAre("Spotify import error: The request timed out."));
    expectFailed("silent accounts service");
    server.neverAnswer("/v1/playlists/silent/tracks");
    import("silent");
    expectFailed("silent playlist service");
    server.neverAnswer("/silent.json");
    EXPECT_THAT(check("1.0", server.address("/silent.json")),
                ElementsAre("Error fetching update info: The request timed out."));
}

TEST_F(SourcesOverHttp, NothingIsToldToAServerThatNobodyTrusts) {
    const SelfSignedCertificate certificate;
    LocalServer secure(certificate);
    int requests = 0;
    for (const char* path : {"/api/token", "/latest.json"})
        secure.on(path, [&](const httplib::Request&, httplib::Response&) { ++requests; });
    import("ID", {secure.address(), secure.address()});
    EXPECT_THAT(test.console.lines(), ElementsAre(HasSubstr("certificate")));
    expectFailed("untrusted");
    EXPECT_THAT(
        check("1.0", secure.address("/latest.json")),
        ElementsAre(testing::AllOf(StartsWith("Error fetching update info: "), HasSubstr("certificate"))));
    EXPECT_EQ(requests, 0);
}

TEST_F(SourcesOverHttp, AnIdentifierThatIsNoneEndsTheImport) {
    for (const char* address :
         {"https://open.example/playlist/a%20b", "https://open.example/playlist/..%2Fme"}) {
        import(address);
        expectFailed(address);
    }
}

TEST_F(SourcesOverHttp, UpdatesAreAnnounced) {
    server.on("/latest.json", 200, R"({"version":"1.10","url":"https://a.example/get","notes":"New."})");
    EXPECT_THAT(check("1.9", server.address("/latest.json")),
                ElementsAre("Current version: 1.9", "Remote version: 1.10", "Release notes: New.",
                            "Update available!"));
    ASSERT_TRUE(found);
    EXPECT_EQ(found->url, "https://a.example/get");

    found.reset();
    EXPECT_THAT(check("1.10", server.address("/latest.json")), Contains("You're up to date."));
    server.on("/404.json", 404, "<html>Not found</html>", "text/html");
    EXPECT_THAT(check("1.0", server.address("/404.json")), ElementsAre("Failed to decode update info."));
    server.on("/empty.json", 200, "");
    EXPECT_THAT(check("1.0", server.address("/empty.json")), ElementsAre("Failed to decode update info."));
    EXPECT_FALSE(found);

    const std::string notes(20'000'000, 'n');
    server.on("/large.json", 200, R"({"version":"2","notes":")" + notes + "\"}", "application/octet-stream");
    EXPECT_THAT(check("1.0", server.address("/large.json")), Contains("Update available!"));
    ASSERT_TRUE(found);
    EXPECT_EQ(found->notes->size(), notes.size());
}

} // namespace
} // namespace orvalen::test
