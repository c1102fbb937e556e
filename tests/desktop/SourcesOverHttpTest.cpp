#include "core/Base64.h"
#include "core/LibraryIndexBuilder.h"
#include "desktop/EventLoop.h"
#include "desktop/LocalServer.h"
#include "import/SpotifyImport.h"
#include "matching/WantedList.h"
#include "platform/desktop/QtHttpSession.h"
#include "support/Builders.h"
#include "support/TestPlatform.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace orvalen::test {
namespace {

/// Answers like a service that wants its requests just so.
void serve(LocalServer& server, const ContentView& view) {
    const std::string credentials = "Basic " + base64(view.spotifyClientID + ":" + view.spotifyClientSecret);
    server.on("/api/token", [=](const httplib::Request& request, httplib::Response& response) {
        const bool known = request.method == "POST" && request.body == "grant_type=client_credentials" &&
                           request.get_header_value("Authorization") == credentials;
        response.status = known ? 200 : 400;
        response.set_content(R"({"access_token":"granted","token_type":"Bearer","expires_in":3600})",
                             "application/json");
    });
    server.on("/v1/playlists/ID/tracks", [](const httplib::Request& request, httplib::Response& response) {
        const bool allowed = request.get_header_value("Authorization") == "Bearer granted" &&
                             request.get_param_value("limit") == "100" &&
                             request.get_param_value("fields") == "items(track(name,artists(name)))";
        response.status = allowed ? 200 : 401;
        response.set_content(
            R"({"items":[{"track":{"artists":[{"name":"Night Band"}],"name":"Last Tr\u00e4in"}}]})",
            "application/json");
    });
}

/// The import over the real session and a real server; everything else is faked.
TEST(SourcesOverHttp, ImportAndMatchAPlaylist) {
    TestPlatform test;
    QtHttpSession session;
    Platform platform{test.console,     test.mainQueue,     test.matchQueue,   test.tagQueue,
                      test.dialogs,     test.mediaAssets,   test.audioPlayers, test.folderAccess,
                      test.userFolders, test.notifications, session,           test.sound,
                      test.browser,     test.bundle,        test.driveWatch};
    ContentView view{platform, [&]() -> PlaylistDatabaseManager& { return test.database(); }};
    LocalServer server;
    serve(server, view);
    view.trackDict.set(buildIndex(std::vector{track("Night Band", "Last Träin")}));

    importSpotifyPlaylist(view, server.address("/intl-de/playlist/ID?si=x"), startMatching,
                          {server.address(), server.address()});
    ASSERT_TRUE(turnUntil([&] { return !view.matchInput.get().empty(); }, std::chrono::seconds(30)));
    EXPECT_EQ(view.matchInput.get(), "Night Band - Last Träin");
    test.settle();
    EXPECT_TRUE(view.showResultsPage.get());
    ASSERT_EQ(view.matchedTracks.get().size(), 1U);
    EXPECT_TRUE(view.matchedTracks.get()[0].found);
}

} // namespace
} // namespace orvalen::test
