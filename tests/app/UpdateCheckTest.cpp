#include "app/UpdateCheck.h"

#include "support/TestPlatform.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace orvalen::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(UpdateCheck, ComparesRunsOfDigitsByValue) {
    using Pair = std::pair<std::string, std::string>;
    const Pair greater[] = {
        {"1.9", "1.10"},
        {"1.0", "1.0.1"},
        {"", "1"},
        {"1.0", "1.a"}, // a digit against a letter: by character
        {"1.0.9b", "1.0.10a"},
        {"1.0A", "1.0a"}, // capitals come first
        {"1.0z", "1.0é"},
        {"9" + std::string(400, '9'), "1" + std::string(401, '0')},
        {"1.0", "?"}, // a program without a version is ahead of everything
    };
    for (const auto& [left, right] : greater) {
        EXPECT_LT(compareNumerically(left, right), 0) << left << " < " << right;
        EXPECT_GT(compareNumerically(right, left), 0) << right << " > " << left;
    }
    for (const auto& [left, right] : {Pair{"", ""}, {"1.01", "1.1"}, {"0", "000"}, {"v1 beta", "v1 beta"}})
        EXPECT_EQ(compareNumerically(left, right), 0) << left << " = " << right;
}

class UpdateCheckRun : public testing::Test {
protected:
    void check(const std::string& current) {
        checkForUpdates(test.platform, current,
                        [this](LatestInfo info) { found.push_back(std::move(info)); });
    }
    void answer(Expected<HttpResponse> response) {
        test.httpSession.answer(std::move(response));
        foundBeforeTheQueueRan = !found.empty();
        test.settle();
    }

    TestPlatform test;
    std::vector<LatestInfo> found;
    bool foundBeforeTheQueueRan = false;
};

TEST_F(UpdateCheckRun, AsksForTheManifestPastEveryCache) {
    check("1.0");
    ASSERT_EQ(test.httpSession.requests.size(), 1U);
    const HttpRequest& request = test.httpSession.requests.front();
    EXPECT_EQ(request.address, configuration::updateAddress);
    EXPECT_EQ(request.method, "GET");
    EXPECT_THAT(request.headers, IsEmpty());
    EXPECT_EQ(request.body, "");
    EXPECT_EQ(request.cachePolicy, CachePolicy::reloadIgnoringCache);
    EXPECT_EQ(request.timeout, std::chrono::seconds(60));
    EXPECT_THAT(test.console.lines(), IsEmpty());
}

TEST_F(UpdateCheckRun, AnnouncesANewerVersion) {
    check("1.9");
    answer(HttpResponse{
        200, R"({"version":"1.10","url":"https://a.example/x","notes":"Line one\nLine two","more":[1]})"});
    EXPECT_THAT(test.console.lines(), ElementsAre("Current version: 1.9", "Remote version: 1.10",
                                                  "Release notes: Line one\nLine two", "Update available!"));
    EXPECT_FALSE(foundBeforeTheQueueRan);
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found.front().version, "1.10");
    EXPECT_EQ(found.front().url, "https://a.example/x");
    EXPECT_EQ(found.front().notes, "Line one\nLine two");
}

TEST_F(UpdateCheckRun, TakesAManifestOfAnyStatusWithNothingButAVersion) {
    check("1.0");
    answer(HttpResponse{404, "\xEF\xBB\xBF{\"version\":\"2.0\",\"url\":null,\"notes\":null}"});
    EXPECT_THAT(test.console.lines(),
                ElementsAre("Current version: 1.0", "Remote version: 2.0", "Update available!"));
    ASSERT_EQ(found.size(), 1U);
    EXPECT_FALSE(found.front().url);
    EXPECT_FALSE(found.front().notes);
}

TEST_F(UpdateCheckRun, IsQuietAboutAVersionThatIsNotNewer) {
    check("1.9");
    answer(HttpResponse{200, R"({"version":"1.09","notes":"n"})"});
    EXPECT_THAT(test.console.lines(), ElementsAre("Current version: 1.9", "Remote version: 1.09",
                                                  "Release notes: n", "You're up to date."));
    EXPECT_THAT(found, IsEmpty());
}

TEST_F(UpdateCheckRun, DecodesNothingButAManifest) {
    for (const char* body : {"<html>404</html>", "[]", R"({"version":2})", R"({"version":"2.0","url":7})",
                             R"({"version":"2.0","notes":[]})", R"({"version":"2.0"} x)"}) {
        test.console.clear();
        check("1.0");
        answer(HttpResponse{200, body});
        EXPECT_THAT(test.console.lines(), ElementsAre("Failed to decode update info.")) << body;
    }
    EXPECT_THAT(found, IsEmpty());
}

TEST_F(UpdateCheckRun, TellsWhatTheNetworkSaid) {
    check("1.0");
    answer(failure("no route to host"));
    EXPECT_THAT(test.console.lines(), ElementsAre("Error fetching update info: no route to host"));
    EXPECT_THAT(found, IsEmpty());
}

TEST_F(UpdateCheckRun, SendsNothingToAnAddressThatIsNone) {
    checkForUpdates(test.platform, "1.0", {}, "https://a.example/latest json");
    EXPECT_THAT(test.console.lines(), ElementsAre("Invalid update URL."));
    EXPECT_THAT(test.httpSession.requests, IsEmpty());
}

TEST(UpdateDownload, OpensNothingButAWebAddress) {
    TestPlatform test;
    const auto open = [&](std::optional<std::string> url) {
        openDownloadPage(test.platform, LatestInfo{"2.0", std::move(url), std::nullopt});
    };
    for (const char* address : {"", "orvalen.example/get", "https:///get", "file:///etc/passwd",
                                "javascript:alert(1)", "https://a.example/a b", "//a.example/get"})
        open(address);
    open(std::nullopt);
    EXPECT_THAT(test.browser.opened, IsEmpty());

    open("https://a.example/get?x=1#y");
    open("HTTP://a.example");
    EXPECT_THAT(test.browser.opened, ElementsAre("https://a.example/get?x=1#y", "HTTP://a.example"));
}

} // namespace
} // namespace orvalen::test
