#include "app/OrvalenApp.h"

#include "app/OpenedFile.h"
#include "support/Builders.h"
#include "support/TestPlatform.h"

#include <gmock/gmock.h>

namespace orvalen::test {
namespace {

using namespace std::chrono_literals;
using testing::Contains;
using testing::IsEmpty;

TEST(OrvalenApp, SavesTheSessionEveryThirtySeconds) {
    TestPlatform test;
    const auto saves = [&] { return test.console.lines().size(); };
    TimerHandle autoSave = installAutoSave(test.view);
    test.mainQueue.advance(30s);
    EXPECT_EQ(saves(), 0U) << "there is nothing to save yet";

    test.view.matchedTracks.set({row("A", "T")});
    test.mainQueue.advance(29'999ms);
    EXPECT_EQ(saves(), 0U);
    test.mainQueue.advance(1ms);
    EXPECT_EQ(saves(), 1U);
    test.mainQueue.advance(30s);
    EXPECT_EQ(saves(), 2U);
    EXPECT_TRUE(test.support().exists("Orvalen/session.orvs"));

    autoSave.reset();
    test.mainQueue.advance(60s);
    EXPECT_EQ(saves(), 2U);
}

TEST(ContentAppeared, RestoresTheLibraryBeforeItAsksForANewerVersion) {
    TestPlatform test;
    ContentView& view = test.view;
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
    test.httpSession.answer(HttpResponse{200, R"({"version":"1.0"})"});
    EXPECT_THAT(test.console.lines(), Contains("You're up to date.")) << "the build number does not count";
}

TEST(ContentAppeared, SaysThatNothingIsKeptWithoutAHome) {
    TestPlatform test;
    test.userFolders.folder.reset();
    contentAppeared(test.view);
    EXPECT_THAT(test.console.lines(), testing::ElementsAre(testing::HasSubstr("No home folder")));
}

TEST(ContentAppeared, PresentsANewerVersionOnceItIsKnown) {
    TestPlatform test;
    ContentView& view = test.view;
    bool knownWhenShown = false;
    view.showUpdateAlert.observe([&] { knownWhenShown = view.remoteInfo.get().has_value(); });
    test.bundle.texts.clear();
    contentAppeared(view);
    test.httpSession.answer(HttpResponse{200, R"({"version":"Z","notes":"new"})"});
    test.settle();
    EXPECT_THAT(test.console.lines(), Contains("Current version: ?")) << "a version that is missing";
    EXPECT_TRUE(view.showUpdateAlert.get());
    EXPECT_TRUE(knownWhenShown);
    EXPECT_EQ(view.remoteInfo.get()->version, "Z");
    EXPECT_EQ(view.remoteInfo.get()->notes, "new");
}

constexpr const char* library =
    R"({"tracks":[{"title":"T","artist":"A","genre":"","path":"/1.mp3"}],"preferred":[],"folders":[]})";
constexpr const char* session = R"({"matchInput":"A - T","matchedTracks":[]})";

class OpenedFile : public testing::Test {
protected:
    void open(const char* name, const char* bytes) {
        openFile(view, Location{test.support().write(name, bytes)});
    }
    std::size_t questions() { return test.dialogs.questions.size(); }
    std::size_t messages() { return test.dialogs.messages.size(); }

    TestPlatform test;
    ContentView& view = test.view;
};

TEST_F(OpenedFile, AsksBeforeItReplacesShownResultsOrTheLibrary) {
    open("evening.ORVS", session);
    EXPECT_EQ(view.matchInput.get(), "A - T");
    EXPECT_TRUE(view.showResultsPage.get());
    EXPECT_EQ(questions(), 0U);
    view.matchInput.set("mine");
    for (const bool agrees : {false, true}) {
        test.dialogs.confirms = agrees;
        open("evening.orvs", session);
        EXPECT_EQ(view.matchInput.get(), agrees ? "A - T" : "mine");
        open("other.orvl", library);
        EXPECT_EQ(view.trackCount.get(), agrees ? 1 : 0);
    }
    EXPECT_EQ(questions(), 4U);
}

TEST_F(OpenedFile, RefusesOtherFilesAndEveryFileDuringAScan) {
    test.dialogs.confirms = true;
    open("evening.m3u", session);
    EXPECT_EQ(messages(), 1U);
    view.scanProgress.set(0.5);
    open("evening.orvs", session);
    open("other.orvl", library);
    EXPECT_EQ(messages(), 3U);
    EXPECT_EQ(questions(), 0U);
    EXPECT_EQ(view.matchInput.get(), "");
    EXPECT_EQ(view.trackCount.get(), 0);
}

} // namespace
} // namespace orvalen::test
