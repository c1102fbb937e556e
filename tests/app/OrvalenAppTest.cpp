#include "app/OrvalenApp.h"

#include "core/Json.h"
#include "platform/Bundle.h"
#include "support/Builders.h"
#include "support/TestPlatform.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace orvalen::test {
namespace {

using namespace std::chrono_literals;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(OrvalenApp, ShowsAQuestionMarkForAVersionThatIsMissing) {
    FakeBundle bundle;
    EXPECT_EQ(infoString(bundle, "CFBundleVersion"), "1");
    bundle.texts.clear();
    EXPECT_EQ(infoString(bundle, "CFBundleVersion"), "?");
}

TEST(OrvalenApp, SavesTheSessionEveryThirtySeconds) {
    TestPlatform test;
    const std::string line = "Auto-saving session to " + test.support().path("Orvalen/session.orvs");
    const auto saved = [&] { return decodeSession(test.support().read("Orvalen/session.orvs"))->matchInput; };
    TimerHandle autoSave = installAutoSave(test.view);
    test.mainQueue.advance(30s);
    EXPECT_THAT(test.console.lines(), IsEmpty()) << "there is nothing to save yet";

    test.view.matchedTracks.set({row("A", "T")});
    test.view.matchInput.set("first");
    test.view.showResultsPage.set(true);
    test.mainQueue.advance(29'999ms);
    EXPECT_THAT(test.console.lines(), IsEmpty());
    test.mainQueue.advance(1ms);
    EXPECT_EQ(saved(), "first");
    test.view.matchInput.set("second");
    test.mainQueue.advance(30s);
    EXPECT_EQ(saved(), "second");
    EXPECT_THAT(test.console.lines(), ElementsAre(line, line));

    autoSave.reset();
    test.mainQueue.advance(60s);
    EXPECT_EQ(test.console.lines().size(), 2U);
}

class ContentAppeared : public testing::Test {
protected:
    void answer(const std::string& body) {
        test.httpSession.answer(HttpResponse{200, body});
        test.settle();
    }
    TestPlatform test;
    ContentView& view = test.view;
};

TEST_F(ContentAppeared, RestoresTheLibraryBeforeItAsksForANewerVersion) {
    test.support().write("Orvalen/library.orvl",
                         R"({"tracks":[{"title":"T","artist":"A","genre":"","path":"/1.mp3"}],)"
                         R"("preferred":[{"key":"a t","path":"/1.mp3"}],"folders":[]})");
    bool askedBefore = false;
    view.trackDict.observe([&] { askedBefore |= !test.httpSession.requests.empty(); });
    contentAppeared(view);
    EXPECT_EQ(view.trackCount.get(), 1);
    EXPECT_EQ(test.database().preferredPath("a t"), "/1.mp3");
    EXPECT_EQ(test.httpSession.requests.size(), 1U);
    EXPECT_FALSE(askedBefore);
    EXPECT_THAT(view.matchedTracks.get(), IsEmpty()) << "no session comes back by itself";
}

TEST_F(ContentAppeared, PresentsANewerVersionOnceItIsKnown) {
    bool knownWhenShown = false;
    view.showUpdateAlert.observe([&] { knownWhenShown = view.remoteInfo.get().has_value(); });
    contentAppeared(view);
    EXPECT_FALSE(view.showUpdateAlert.get());
    answer(R"({"version":"1.1","notes":"new"})");
    EXPECT_TRUE(view.showUpdateAlert.get());
    EXPECT_TRUE(knownWhenShown);
    EXPECT_EQ(view.remoteInfo.get()->version, "1.1");
    EXPECT_EQ(view.remoteInfo.get()->notes, "new");
}

TEST_F(ContentAppeared, KeepsQuietAboutTheVersionThatRuns) {
    contentAppeared(view);
    answer(R"({"version":"1.0"})");
    EXPECT_FALSE(view.showUpdateAlert.get());
    EXPECT_FALSE(view.remoteInfo.get());
}

TEST_F(ContentAppeared, ComparesWithAQuestionMarkWhenThereIsNoVersion) {
    test.bundle.texts.clear();
    contentAppeared(view);
    answer(R"({"version":"9.9"})");
    EXPECT_THAT(test.console.lines(), Contains("Current version: ?"));
}

} // namespace
} // namespace orvalen::test
