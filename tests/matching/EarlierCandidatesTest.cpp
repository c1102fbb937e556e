#include "matching/EarlierCandidates.h"

#include "support/Builders.h"
#include "support/TestPlatform.h"

#include <gtest/gtest.h>

namespace orvalen::test {
namespace {

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
