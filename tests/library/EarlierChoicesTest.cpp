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
        world.view.earlierChoices.set({});
        loadPersistentLibrary(world.view);
        world.settle();
        return world.view.earlierChoices.get();
    }
    bool hasFile() const { return world.support().exists("Orvalen/earlier_choices.json"); }

    TestPlatform world;
};

TEST_F(EarlierChoices, SurviveTheStartThatTakesThemOutOfTheTable) {
    world.database().savePreferredMatch("scanned", "/s.mp3");
    savePersistentLibrary(world.view);
    EXPECT_THAT(afterStart(), IsEmpty());
    EXPECT_FALSE(hasFile());

    world.database().savePreferredMatch("later", "/l.mp3");
    world.database().savePreferredMatch("scanned", "/s2.mp3");
    EXPECT_EQ(afterStart(), (PreferredMatches{{"later", "/l.mp3"}, {"scanned", "/s2.mp3"}}));
    EXPECT_EQ(world.database().allPreferredMatches(), (PreferredMatches{{"scanned", "/s.mp3"}}));

    world.database().savePreferredMatch("later", "/l2.mp3");
    const PreferredMatches merged = {{"later", "/l2.mp3"}, {"scanned", "/s2.mp3"}};
    EXPECT_EQ(afterStart(), merged) << "the later choice for a key, with the earlier ones for others";
    EXPECT_EQ(afterStart(), merged);
    world.console.clear();
}

TEST_F(EarlierChoices, EndWithANewChoiceOrWithTheLibrary) {
    world.support().write("Orvalen/earlier_choices.json",
                          R"({"preferred":[{"key":"a t","path":"/1"},{"key":"b t","path":"/2"}]})");
    loadEarlierChoices(world.view);
    world.view.matchedTracks.set({row("A", "T", {track("A", "T", {}, "/1"), track("A", "T", {}, "/3")})});
    chooseOption(world.view, 0, "/3");
    EXPECT_EQ(afterStart(), (PreferredMatches{{"b t", "/2"}}));
    removeSavedLibrary(world.view);
    EXPECT_THAT(world.view.earlierChoices.get(), IsEmpty());
    EXPECT_FALSE(hasFile());
}

TEST_F(EarlierChoices, AreBounded) {
    PreferredMatches many;
    for (std::size_t i = 0; i < mostEarlierChoices; ++i)
        many.emplace("old " + std::to_string(i), "/o");
    world.view.earlierChoices.set(many);
    world.database().savePreferredMatch("new", "/n");
    keepChoicesReplacedBy(world.view, {});
    EXPECT_EQ(world.view.earlierChoices.get().size(), mostEarlierChoices);
    EXPECT_TRUE(world.view.earlierChoices.get().contains("new"));
}

TEST_F(EarlierChoices, WhatCannotBeReadIsSilentlyNone) {
    for (const char* bytes : {"", "[]", R"({"preferred":{"a":"/1"}})"}) {
        world.support().write("Orvalen/earlier_choices.json", bytes);
        EXPECT_THAT(afterStart(), IsEmpty()) << bytes;
    }
    world.database().savePreferredMatch("a", "/1");
    OtherProgram other(world.support().path("orvalen.sqlite"));
    other.run("BEGIN EXCLUSIVE");
    keepChoicesReplacedBy(world.view, {});
    EXPECT_THAT(world.view.earlierChoices.get(), IsEmpty());
    EXPECT_THAT(world.console.lines(), IsEmpty());
}

} // namespace
} // namespace orvalen::test
