#include "matching/MatchReview.h"

#include "core/Keys.h"
#include "matching/EarlierCandidates.h"
#include "support/Builders.h"
#include "support/TestPlatform.h"

#include <gmock/gmock.h>

namespace orvalen::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* composedPath = "/Music/Caf\u00E9.mp3";
constexpr const char* decomposedPath = "/Music/Cafe\u0301.mp3";

MatchedTrack withSelection(MatchedTrack row, std::optional<Track> selected) {
    row.selectedTrack = std::move(selected);
    return row;
}

TEST(MatchReviewTexts, HeaderTellsTheTempoThatIsKnown) {
    const Track slow = track("A", "T", 90);
    const Track fast = track("A", "T", 140);
    const Track still = track("A", "T", 0);
    const Track unknown = track("A", "T");
    const struct {
        const char* quirk;
        std::vector<Track> options;
        std::optional<Track> selected;
        const char* header;
    } cases[] = {
        {"the selected track's", {slow, fast}, fast, "A – T (140 BPM)"},
        {"no selection: the first option's", {slow, fast}, {}, "A – T (90 BPM)"},
        {"selection without: the first option that has one", {unknown, fast}, unknown, "A – T (140 BPM)"},
        {"a selected file that is no option", {slow}, track("B", "U", 70), "A – T (70 BPM)"},
        {"0 is a tempo", {still, fast}, still, "A – T (0 BPM)"},
        {"none anywhere", {unknown}, unknown, "A – T"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(rowHeader(withSelection(row("A", "T", c.options), c.selected)), c.header) << c.quirk;
    EXPECT_EQ(rowHeader(row("", "")), " – ");
}

TEST(MatchReviewTexts, TellsTracksAndCounts) {
    EXPECT_EQ(optionLabel(track("Søren", "Ænd", 128)), "Søren – Ænd (128 BPM)");
    EXPECT_EQ(fileText(track("A", "T", {}, "/Müsik/a b.mp3")), "File: /Müsik/a b.mp3");
    EXPECT_EQ(tempoText(track("A", "T", 0)), "0 BPM");
    EXPECT_EQ(tempoText(track("A", "T")), "No BPM found");

    EXPECT_EQ(trackCountText(1234567), "1234567 tracks");
    EXPECT_EQ(selectionSummary({row("A", "T")}), "0 tracks selected");
    EXPECT_EQ(selectionSummary({row("A", "T"), row("A", "T", {}, true)}), "1 track selected");
}

TEST(MatchReviewStates, FollowThePreviewedTrackByItsPath) {
    const MatchedTrack nothing = row("A", "T");
    const MatchedTrack shown = row("A", "T", {track("A", "T", 128, composedPath)});
    const auto states = [](const MatchedTrack& row, const std::optional<Track>& previewed) {
        return std::pair(isHeaderBold(row, previewed), isPreviewed(row, previewed));
    };
    EXPECT_EQ(states(nothing, {}), std::pair(true, false)) << "neither is anything";
    EXPECT_EQ(states(shown, {}), std::pair(false, false));
    EXPECT_EQ(states(nothing, shown.selectedTrack), std::pair(false, false));
    EXPECT_EQ(states(shown, track("A", "T", 128, "/Music/caf\u00E9.mp3")), std::pair(false, false));
    EXPECT_EQ(states(shown, track("B", "U", {}, decomposedPath)), std::pair(true, true))
        << "one file, whatever its tags say and however its accent is written";
    const MatchedTrack twins =
        row("A", "T", {track("A", "T", {}, composedPath), track("A", "T", {}, decomposedPath)});
    EXPECT_EQ(states(twins, twins.options[0]), std::pair(true, true));
    EXPECT_EQ(states(twins, twins.options[1]), std::pair(false, false)) << "both are candidates";
}

TEST(MatchReviewStates, PickerShowsTheEntryOfTheSelectedFile) {
    const Track one = track("A", "T", {}, "/1.mp3");
    const Track two = track("A", "T", {}, "/2.mp3");
    const Track accented = track("A", "T", {}, composedPath);
    const Track apart = track("A", "T", {}, decomposedPath);
    const struct {
        const char* quirk;
        std::vector<Track> options;
        std::optional<Track> selected;
        bool shown;
        int entry;
    } cases[] = {
        {"no candidates", {}, {}, false, -1},
        {"one candidate", {one}, one, false, 0},
        {"two candidates", {one, two}, two, true, 1},
        {"one file twice: the first entry", {one, one}, one, true, 0},
        {"nothing selected", {one, two}, {}, true, -1},
        {"a file that is no candidate", {one, two}, accented, true, -1},
        {"the other form of an accent", {one, accented}, apart, true, 1},
        {"the other of two files whose names differ only in an accent's form",
         {accented, apart},
         apart,
         true,
         1},
    };
    for (const auto& c : cases) {
        const MatchedTrack shown = withSelection(row("A", "T", c.options), c.selected);
        EXPECT_EQ(showsPicker(shown), c.shown) << c.quirk;
        EXPECT_EQ(pickedOption(shown), c.entry) << c.quirk;
    }
}

class MatchReview : public testing::Test {
protected:
    void showRows(std::vector<MatchedTrack> rows) { view.matchedTracks.set(std::move(rows)); }
    const MatchedTrack& shown(std::size_t row) { return view.matchedTracks.get().at(row); }
    std::optional<std::string> preferred(std::string_view artist, std::string_view title) {
        return test.database().preferredPath(libraryKey(artist, title));
    }

    TestPlatform test;
    ContentView& view = test.view;
};

TEST_F(MatchReview, IncludesAllRowsOneAfterAnother) {
    showRows({row("A", "1"), row("A", "2", {}, true), row("A", "3")});
    std::vector<std::size_t> counts;
    view.matchedTracks.observe([&] { counts.push_back(includedCount(view.matchedTracks.get())); });
    setIncludeForAll(view, true);
    EXPECT_THAT(counts, ElementsAre(2, 2, 3));
    setInclude(view, 1, false);
    EXPECT_FALSE(shown(1).include);
    EXPECT_EQ(includedCount(view.matchedTracks.get()), 2U);
}

TEST_F(MatchReview, RemembersAChoiceAtOnceAndTakesNoRowAndNoPathThatIsMissing) {
    const Track one = track("A", "T", {}, "/Müsik/1.mp3");
    const Track two = track("A", "T", 128, "/Müsik/2.mp3");
    showRows({row("Other", "Row"), row("Die Ärzte", "Schrei, nach Liebe!", {one, two})});

    chooseOption(view, 1, two.path);
    EXPECT_EQ(shown(1).selectedTrack, two);
    EXPECT_FALSE(shown(1).include);
    EXPECT_EQ(preferred("die arzte", "schrei nach liebe"), two.path);

    chooseOption(view, 1, shown(1).options.front().path); // a path inside the changed row
    EXPECT_EQ(shown(1).selectedTrack, one);
    EXPECT_EQ(preferred("Die Ärzte", "Schrei, nach Liebe!"), one.path);

    bool written = false;
    view.matchedTracks.observe([&] { written = true; });
    setInclude(view, 2, true);
    chooseOption(view, 2, two.path);
    EXPECT_FALSE(written);
    chooseOption(view, 1, "/3.mp3");
    EXPECT_FALSE(shown(1).selectedTrack);
    EXPECT_EQ(preferred("Die Ärzte", "Schrei, nach Liebe!"), one.path);
    EXPECT_EQ(test.database().allPreferredMatches().size(), 1U);
    EXPECT_THAT(test.console.lines(), IsEmpty());
}

TEST(EarlierCandidates, AreTheCandidatesOfAnEarlierChoiceThatAreNotSelected) {
    const Track one = track("A", "T", {}, "/1");
    const Track two = track("A", "T", {}, "/2");
    TestPlatform test;
    test.view.earlierChoices.set({{"a t", "/2"}, {"b t", "/gone"}});
    std::vector<MatchedTrack> rows = {row("B", "T", {one, two}), row("C", "T", {one, two}),
                                      row("Á", "t!", {one, two}), row("A", "T", {two, one}),
                                      row("A", "T", {one, two})};
    rows.back().selectedTrack.reset();
    test.view.matchedTracks.set(rows);
    const auto found = earlierCandidates(test.view);
    ASSERT_EQ(found.size(), 2U);
    EXPECT_EQ(std::pair(found[0].row, found[0].option), std::pair(std::size_t{2}, std::size_t{1}));
    EXPECT_EQ(std::pair(found[1].row, found[1].option), std::pair(std::size_t{4}, std::size_t{1}));
    EXPECT_EQ(earlierOption(test.view, rows[3]), 0U) << "marked although it is selected";
}

} // namespace
} // namespace orvalen::test
