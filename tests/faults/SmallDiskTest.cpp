#include "faults/SmallDisk.h"
#include "core/LibraryIndexBuilder.h"
#include "faults/FaultReport.h"
#include "faults/Trial.h"
#include "library/LibraryIndexState.h"
#include "support/Builders.h"

#include <cerrno>
#include <gmock/gmock.h>

namespace orvalen::test {
namespace {

std::vector<Flow> writingFlows() {
    std::vector<Flow> writing;
    for (const Flow& flow : flows())
        if (flow.access != Access::read)
            writing.push_back(flow);
    return writing;
}

/// Makes what the flow writes longer than what is left, and than an old file.
void lengthen(const Flow& flow, World& world) {
    std::vector<Track> tracks;
    std::vector<MatchedTrack> rows;
    std::vector<Location> folders;
    for (int number = 0; number < 1000; ++number) {
        const Track each = track("An Artist", "A title of some length " + std::to_string(number));
        tracks.push_back(each);
        rows.push_back(row(each.artist, each.title, {each}, true));
        folders.push_back({"/Music/" + each.title});
    }
    replaceIndex(world.view, buildIndex(tracks));
    world.view.matchedTracks.set(rows);
    if (flow.name == std::string("list of folders")) // others that write it as well have room for a short one
        world.view.musicFolderURLs.set(folders);
}

class SmallDisks : public testing::TestWithParam<Flow> {
protected:
    void SetUp() override {
        if (!canMount())
            GTEST_SKIP() << "no disk can be mounted here";
    }

    void fillUp(bool isOldThere) {
        SmallDisk disk;
        Trial run(flow, isOldThere);
        lengthen(flow, run.world);
        const std::string before = run.world.state();
        disk.fillBut(16 * 1024);
        run.act();
        EXPECT_EQ(run.lines(), failureLines(flow, ENOSPC));
        EXPECT_EQ(run.content(), run.contentBefore);
        EXPECT_EQ(run.state, before);
        const std::size_t neighbours = run.neighbours();

        disk.makeRoom();
        run.act();
        EXPECT_EQ(run.lines(), flow.success);
        EXPECT_GT(run.content().value_or("").size(), 40'000U) << "the disk was too small for it";
        EXPECT_EQ(run.neighbours(), neighbours) << "something was left beside";
    }

    const Flow& flow = GetParam();
};

TEST_P(SmallDisks, FillUpAndWhatWasThereStays) {
    fillUp(false);
    const bool hasOneName = !flow.saysAlways; // that of an automatic backup is a time
    if (hasOneName)
        fillUp(true);
    report(flow.name, "disk of one megabyte", "full",
           hasOneName ? "told; old file whole; where none was, no file" : "silent; no file");
}

INSTANTIATE_TEST_SUITE_P(Flows, SmallDisks, testing::ValuesIn(writingFlows()), nameOfTest);

/// As a scan does at its end. It would be the worst moment to find no room: the old rows are gone, and the
/// library file that is written next holds those that are left.
TEST(SmallDisk, ChoicesThatAreReplacedByThemselvesStayHoweverLittleRoomIsLeft) {
    if (!canMount())
        GTEST_SKIP() << "no disk can be mounted here";
    PreferredMatches choices;
    for (int number = 0; number < 2000; ++number)
        choices["key " + std::to_string(number)] = "/Music/" + std::string(60, 'p');
    for (const std::size_t left : {0U, 16U, 64U, 256U}) {
        SmallDisk disk;
        TestPlatform world;
        world.database().replacePreferredMatches(choices);
        disk.fillBut(left * 1024);
        world.database().replacePreferredMatches(choices);
        EXPECT_EQ(world.database().allPreferredMatches(), choices) << left << " kB";
        const bool isReplaced = world.console.lines().empty();
        if (!isReplaced) {
            EXPECT_THAT(world.console.lines(),
                        testing::ElementsAre("Error clearing preferred matches: database or disk is full"));
        }
        report("choices replaced by themselves", "disk of one megabyte", "full",
               isReplaced ? "silent; new rows there" : "told; old rows there");
    }
}

} // namespace
} // namespace orvalen::test
