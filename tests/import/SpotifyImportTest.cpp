#include "import/SpotifyImport.h"

#include "core/Base64.h"
#include "core/LibraryIndexBuilder.h"
#include "matching/WantedList.h"
#include "support/Builders.h"
#include "support/TestPlatform.h"

#include <gmock/gmock.h>

namespace orvalen::test {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::Pair;
using testing::SizeIs;
using testing::StartsWith;

const HttpResponse goodToken{
    200, R"({"access_token":"granted","token_type":"Bearer","expires_in":3600,"scope":""})"};

/// Returns one entry of a playlist answer.
std::string entry(const std::string& artists, const std::string& title) {
    return R"({"added_at":null,"track":{"artists":)" + artists + R"(,"name":")" + title + R"("}})";
}

HttpResponse playlist(const std::string& entries) {
    return {200, R"({"items":[)" + entries + R"(],"next":"https://api.example/more"})"};
}

class SpotifyImport : public testing::Test {
protected:
    SpotifyImport() {
        test.view.inputMode.set(InputMode::spotify);
        test.view.matchInput.set("typed");
        test.view.matchProgress.set(0.5);
    }

    void start(const std::string& address) {
        importSpotifyPlaylist(test.view, address, startMatching, service);
    }
    void expectUntouched() {
        EXPECT_EQ(test.view.inputMode.get(), InputMode::spotify);
        EXPECT_EQ(test.view.matchInput.get(), "typed");
        EXPECT_FALSE(test.view.isMatching.get());
        EXPECT_FALSE(test.view.showResultsPage.get());
    }

    const SpotifyService service{"https://accounts.example", "https://api.example"};
    TestPlatform test;
    FakeHttpSession& http = test.httpSession;
};

TEST_F(SpotifyImport, AsksForATokenThenThePlaylistThenMatches) {
    const Track owned = track("Night Band", "Last Train");
    test.view.trackDict.set(buildIndex(std::vector{owned}));
    test.view.matchInputFormat.set(artistTitleFormat);

    std::vector<bool> flags;
    test.view.isMatching.observe([&] { flags.push_back(test.view.isMatching.get()); });

    start("https://open.example/intl-de/playlist/ID?si=a/b#c/d");
    EXPECT_EQ(test.view.matchProgress.get(), 0);
    ASSERT_THAT(http.requests, SizeIs(1));
    EXPECT_EQ(http.requests[0].address, "https://accounts.example/api/token");
    EXPECT_EQ(http.requests[0].method, "POST");
    EXPECT_EQ(http.requests[0].body, "grant_type=client_credentials");
    EXPECT_THAT(http.requests[0].headers,
                ElementsAre(Pair("Authorization", "Basic " + base64(test.view.spotifyClientID + ":" +
                                                                    test.view.spotifyClientSecret)),
                            Pair("Content-Type", "application/x-www-form-urlencoded")));

    http.answer(goodToken);
    ASSERT_THAT(http.requests, SizeIs(2));
    EXPECT_EQ(http.requests[1].address, "https://api.example/v1/playlists/ID/tracks"
                                        "?fields=items(track(name,artists(name)))&limit=100");
    EXPECT_EQ(http.requests[1].method, "GET");
    EXPECT_EQ(http.requests[1].body, "");
    EXPECT_THAT(http.requests[1].headers, ElementsAre(Pair("Authorization", "Bearer granted")));
    for (const HttpRequest& request : http.requests) {
        EXPECT_EQ(request.cachePolicy, CachePolicy::protocolDefault);
        EXPECT_EQ(request.timeout, std::chrono::seconds(60));
    }

    http.answer(playlist(entry(R"([{"name":"Night Band"}])", "Last Train") + "," +
                         entry(R"([{"name":"One"},{"name":"Two"}])", "Duet")));
    EXPECT_EQ(test.view.inputMode.get(), InputMode::textList);
    EXPECT_EQ(test.view.matchInput.get(), "Night Band - Last Train\nOne, Two - Duet");
    test.settle();
    EXPECT_THAT(flags, ElementsAre(true, false, true, false)) << "between import and matching it is down";
    EXPECT_TRUE(test.view.showResultsPage.get());
    ASSERT_THAT(test.view.matchedTracks.get(), SizeIs(2));
    EXPECT_EQ(test.view.matchedTracks.get()[0].selectedTrack, owned);
    EXPECT_EQ(test.view.matchedTracks.get()[1].artist, "One, Two");
    EXPECT_THAT(test.console.lines(), Not(Contains(HasSubstr("import"))));
}

TEST_F(SpotifyImport, RefusesAnAddressThatNamesNoPlaylist) {
    for (const char* address : {"", "no address", "https://open.example", "spotify:playlist:ID"})
        start(address);
    EXPECT_THAT(http.requests, IsEmpty());
    EXPECT_THAT(test.console.lines(), IsEmpty());
    EXPECT_EQ(test.view.matchProgress.get(), 0.5);
    start("https://open.example/playlist/..%2F..%2Fme"); // would reach another path of the service
    http.answer(goodToken);
    EXPECT_THAT(http.requests, SizeIs(1));
    EXPECT_THAT(test.console.lines(),
                ElementsAre("Spotify import error: The address does not end in a playlist identifier."));
    expectUntouched();
}

TEST_F(SpotifyImport, TellsWhyThereIsNoToken) {
    const std::string refusal = R"({"error":"invalid_client"})";
    const struct {
        Expected<HttpResponse> answer;
        std::vector<std::string> lines;
    } cases[] = {
        {failure("no route to host"), {"Spotify import error: no route to host"}},
        {HttpResponse{201, refusal},
         {"Spotify token fetch failed, HTTP 201: " + refusal, "Spotify import error: HTTP 201: " + refusal}},
        {HttpResponse{503, "<p>\xFF"},
         {"Spotify token fetch failed, HTTP 503: <non-text response>",
          "Spotify import error: HTTP 503: <non-text response>"}},
    };
    for (const auto& c : cases) {
        test.console.clear();
        start("ID");
        http.answer(c.answer);
        EXPECT_EQ(test.console.lines(), c.lines);
        expectUntouched();
    }
    std::optional<SpotifyTokenFailure> error;
    fetchSpotifyToken(http, test.console, SpotifyService{}, "identifier:secret",
                      [&](const auto& token) { error = token.error(); });
    http.answer(HttpResponse{201, refusal});
    ASSERT_TRUE(error);
    EXPECT_EQ(std::pair(error->domain, error->code), std::pair(std::string_view("SpotifyTokenError"), 201));
}

TEST_F(SpotifyImport, FailsAsAWholeOnAnAnswerOfAnotherShape) {
    const std::string good = entry(R"([{"name":"A"}])", "T");
    std::vector<std::vector<Expected<HttpResponse>>> allAnswers;
    for (const char* token : {"<html></html>", R"({"token_type":"Bearer","expires_in":3600})",
                              R"({"access_token":"granted","expires_in":3600})",
                              R"({"access_token":"granted","token_type":"Bearer"})",
                              R"({"access_token":"granted","token_type":"Bearer","expires_in":0.5})"})
        allAnswers.push_back({HttpResponse{200, token}});
    const Expected<HttpResponse> playlists[] = {
        failure("connection closed"),
        HttpResponse{404, R"({"error":{"status":404,"message":"Not found."}})"},
        HttpResponse{200, R"({"items":null})"},
        HttpResponse{200, "{\"items\":[" + good},
        playlist(good + R"(,{"track":null})"),
        playlist(good + ",null"),
        playlist(good + R"(,{"track":{"name":"an episode"}})"),
        playlist(good + R"(,{"track":{"artists":[{"name":"A"}]}})"),
        playlist(good + "," + entry("[null]", "T")),
        playlist(good + "," + entry("[{}]", "T")),
        playlist(good + "," + entry(R"([{"name":"A"}])", "\xC3")),
    };
    for (const auto& answer : playlists)
        allAnswers.push_back({goodToken, answer});
    for (const auto& answers : allAnswers) {
        SCOPED_TRACE(answers.back() ? answers.back()->body : "no answer");
        test.console.clear();
        start("ID");
        for (const auto& answer : answers)
            http.answer(answer);
        EXPECT_THAT(test.console.lines(), ElementsAre(StartsWith("Spotify import error: ")));
        EXPECT_THAT(test.console.lines(), Not(Contains(HasSubstr("granted"))));
        expectUntouched();
    }
}

TEST_F(SpotifyImport, WritesOneLineAnEntry) {
    using Case = std::pair<std::string, std::string>;
    std::string many, lines;
    for (int i = 1; i <= 150; ++i) {
        many += (i == 1 ? "" : ",") + entry(R"([{"name":"A"}])", std::to_string(i));
        if (i <= 100)
            lines += (i == 1 ? "A - " : "\nA - ") + std::to_string(i);
    }
    for (const auto& [entries, text] : {
             Case{entry("[]", "T"), " - T"},
             {entry(R"([{"name":"A","id":1},{"name":"B"},{"name":"C"}])", "T"), "A, B, C - T"},
             {entry(R"([{"name":"Z\u00fcri \ud83c\udfb5"}])", "\\\"T\\\""), "Züri 🎵 - \"T\""},
             {many, lines},
         }) {
        test.view.inputMode.set(InputMode::spotify);
        start("ID");
        http.answer(goodToken);
        http.answer(playlist(entries));
        EXPECT_EQ(test.view.matchInput.get(), text);
        EXPECT_EQ(test.view.inputMode.get(), InputMode::textList);
        EXPECT_FALSE(test.view.isMatching.get()) << "the library is empty";
    }
}

TEST_F(SpotifyImport, MatchesNothingWithoutLinesOrWithoutALibrary) {
    for (const bool isEmptied : {false, true}) {
        test.view.inputMode.set(InputMode::spotify);
        test.view.trackDict.set(buildIndex(std::vector{track("A", "T")}));
        start("ID");
        http.answer(goodToken);
        if (isEmptied) // meanwhile
            test.view.trackDict.set({});
        http.answer(isEmptied ? playlist(entry(R"([{"name":"A"}])", "T"))
                              : HttpResponse{404, R"({"items":[]})"});
        EXPECT_EQ(test.view.matchInput.get(), isEmptied ? "A - T" : "");
        EXPECT_EQ(test.view.inputMode.get(), InputMode::textList);
        EXPECT_FALSE(test.view.isMatching.get());
        EXPECT_EQ(test.matchQueue.pending(), 0U);
    }
}

} // namespace
} // namespace orvalen::test
