#include "library/EarlierChoices.h"

#include "library/LibraryFile.h"
#include "matching/MatchReview.h"
#include "support/Builders.h"
#include "support/OtherProgram.h"
#include "support/TestPlatform.h"

#include <gmock/gmock.h>

namespace orvalen::test {
namespace {

using testing::IsEmpty;

class EarlierChoices : public testing::Test {
protected:
    /// What the program remembers after its next start.
    const PreferredMatches& afterStart() {
        test.view.earlierChoices.set({});
        loadPersistentLibrary(test.view);
        test.settle();
        return test.view.earlierChoices.get();
    }
    bool hasFile() const { return test.support().exists("Orvalen/earlier_choices.json"); }

    TestPlatform test;
};

TEST_F(EarlierChoices, SurviveTheStartThatTakesThemOutOfTheTable) {
    test.database().savePreferredMatch("scanned", "/s.mp3");
    savePersistentLibrary(test.view);
    EXPECT_THAT(afterStart(), IsEmpty());
    EXPECT_FALSE(hasFile());

    test.database().savePreferredMatch("later", "/l.mp3");
    test.database().savePreferredMatch("scanned", "/s2.mp3");
    EXPECT_EQ(afterStart(), (PreferredMatches{{"later", "/l.mp3"}, {"scanned", "/s2.mp3"}}));
    EXPECT_EQ(test.database().allPreferredMatches(), (PreferredMatches{{"scanned", "/s.mp3"}}));

    test.database().savePreferredMatch("later", "/l2.mp3");
    const PreferredMatches merged = {{"later", "/l2.mp3"}, {"scanned", "/s2.mp3"}};
    EXPECT_EQ(afterStart(), merged) << "the later choice for a key, with the earlier ones for others";
    EXPECT_EQ(afterStart(), merged);
    test.console.clear();
}

TEST_F(EarlierChoices, EndWithANewChoiceOrWithTheLibrary) {
    test.support().write("Orvalen/earlier_choices.json",
                         R"({"preferred":[{"key":"a t","path":"/1"},{"key":"b t","path":"/2"}]})");
    loadEarlierChoices(test.view);
    test.view.matchedTracks.set({row("A", "T", {track("A", "T", {}, "/1"), track("A", "T", {}, "/3")})});
    chooseOption(test.view, 0, "/3");
    EXPECT_EQ(afterStart(), (PreferredMatches{{"b t", "/2"}}));
    removeSavedLibrary(test.view);
    EXPECT_THAT(test.view.earlierChoices.get(), IsEmpty());
    EXPECT_FALSE(hasFile());
}

TEST_F(EarlierChoices, AreBounded) {
    PreferredMatches many;
    for (std::size_t i = 0; i < mostEarlierChoices; ++i)
        many.emplace("old " + std::to_string(i), "/o");
    test.view.earlierChoices.set(many);
    test.database().savePreferredMatch("new", "/n");
    keepChoicesReplacedBy(test.view, {});
    EXPECT_EQ(test.view.earlierChoices.get().size(), mostEarlierChoices);
    EXPECT_TRUE(test.view.earlierChoices.get().contains("new"));
}

TEST_F(EarlierChoices, WhatCannotBeReadIsSilentlyNone) {
    for (const char* bytes : {"", "[]", R"({"preferred":{"a":"/1"}})"}) {
        test.support().write("Orvalen/earlier_choices.json", bytes);
        EXPECT_THAT(afterStart(), IsEmpty()) << bytes;
    }
    test.database().savePreferredMatch("a", "/1");
    OtherProgram other(test.support().path("orvalen.sqlite"));
    other.run("BEGIN EXCLUSIVE");
    keepChoicesReplacedBy(test.view, {});
    EXPECT_THAT(test.view.earlierChoices.get(), IsEmpty());
    EXPECT_THAT(test.console.lines(), IsEmpty());
}

} // namespace
} // namespace orvalen::test
