#include "app/UpdateCheck.h"

#include "support/TestPlatform.h"

#include <gmock/gmock.h>

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
        {"1.0", "1.a"}, // a digit and a letter are compared as characters
        {"1.0.9b", "1.0.10a"},
        {"1.0A", "1.0a"}, // capitals come first
        {"1.0z", "1.0é"},
        {"9" + std::string(400, '9'), "1" + std::string(401, '0')},
        {"1.0", "?"}, // an unknown version counts as the newest
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
    TestPlatform test;
    std::vector<LatestInfo> found;
};

TEST_F(UpdateCheckRun, AsksAValidAddressForTheManifestPastEveryCache) {
    checkForUpdates(test.platform, "1.0", {}, "https://a.example/latest json");
    EXPECT_THAT(test.console.lines(), ElementsAre("Invalid update URL."));
    EXPECT_THAT(test.httpSession.requests, IsEmpty());
    check("1.0");
    ASSERT_EQ(test.httpSession.requests.size(), 1U);
    const HttpRequest& request = test.httpSession.requests.front();
    EXPECT_EQ(request.address, configuration::updateAddress);
    EXPECT_EQ(request.method, "GET");
    EXPECT_THAT(request.headers, IsEmpty());
    EXPECT_EQ(request.body, "");
    EXPECT_EQ(request.cachePolicy, CachePolicy::reloadIgnoringCache);
    EXPECT_EQ(request.timeout, std::chrono::seconds(60));
}

TEST_F(UpdateCheckRun, TellsTheVersionsAndAnnouncesANewerOne) {
    const std::string failed = "Failed to decode update info.";
    const struct {
        const char* quirk;
        const char* current;
        Expected<HttpResponse> answer;
        std::vector<std::string> lines;
        std::optional<LatestInfo> found = {};
    } cases[] = {
        {"newer",
         "1.9",
         HttpResponse{200, R"({"version":"1.10","url":"https://a.example/x","notes":"One\nTwo","more":[1]})"},
         {"Current version: 1.9", "Remote version: 1.10", "Release notes: One\nTwo", "Update available!"},
         LatestInfo{"1.10", "https://a.example/x", "One\nTwo"}},
        {"any status, a byte-order mark, nothing but a version",
         "1.0",
         HttpResponse{404, "\xEF\xBB\xBF{\"version\":\"2.0\",\"url\":null,\"notes\":null}"},
         {"Current version: 1.0", "Remote version: 2.0", "Update available!"},
         LatestInfo{"2.0", {}, {}}},
        {"not newer",
         "1.9",
         HttpResponse{200, R"({"version":"1.09","notes":"n"})"},
         {"Current version: 1.9", "Remote version: 1.09", "Release notes: n", "You're up to date."}},
        {"no JSON", "1.0", HttpResponse{200, "<html>404</html>"}, {failed}},
        {"a number for the version", "1.0", HttpResponse{200, R"({"version":2})"}, {failed}},
        {"a number for the address", "1.0", HttpResponse{200, R"({"version":"2.0","url":7})"}, {failed}},
        {"a list of notes", "1.0", HttpResponse{200, R"({"version":"2.0","notes":[]})"}, {failed}},
        {"more behind the end", "1.0", HttpResponse{200, R"({"version":"2.0"} x)"}, {failed}},
        {"no answer", "1.0", failure("no route to host"), {"Error fetching update info: no route to host"}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.quirk);
        test.console.clear();
        found.clear();
        check(c.current);
        test.httpSession.answer(c.answer);
        EXPECT_THAT(found, IsEmpty()) << "before the queue ran";
        test.settle();
        EXPECT_EQ(test.console.lines(), c.lines);
        ASSERT_EQ(found.size(), c.found ? 1U : 0U);
        if (c.found) {
            EXPECT_EQ(found[0].version, c.found->version);
            EXPECT_EQ(found[0].url, c.found->url);
            EXPECT_EQ(found[0].notes, c.found->notes);
        }
    }
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
