#include "app/OpenedFile.h"

#include "support/Builders.h"
#include "support/TestPlatform.h"

#include <gtest/gtest.h>

namespace orvalen::test {
namespace {

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
