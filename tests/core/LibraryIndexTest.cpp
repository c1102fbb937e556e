#include "core/LibraryIndex.h"

#include "core/FolderCount.h"
#include "core/LibraryIndexBuilder.h"
#include "core/Text.h"
#include "support/Builders.h"

#include <gmock/gmock.h>
#include <random>

namespace orvalen::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::string> pathsUnder(const LibraryIndex& index, std::string_view key) {
    std::vector<std::string> result;
    const PositionRange range = index.positionsUnder(key);
    for (std::size_t position = range.first; position < range.last; ++position)
        result.emplace_back(index.track(position).path);
    return result;
}

TEST(LibraryIndex, FilesUnderTheNormalisedKeyInOrder) {
    const LibraryIndex index = buildIndex(std::vector{
        track("Night Band", "Last Train Home", {}, "/1"), track("Other", "Song", {}, "/2"),
        track("NIGHT BAND", "Last train home!", {}, "/3"), track("Other", "Song", {}, "/2"),
        track("!!!", "...", {}, "/4"), track("", "Intro", {}, "/5"), track("Intro", "", {}, "/6")});
    EXPECT_EQ(countTracks(index), 7);
    EXPECT_EQ(index.keyCount(), 4U);
    EXPECT_THAT(pathsOf(allTracks(index)), ElementsAre("/1", "/3", "/2", "/2", "/4", "/5", "/6"));
    EXPECT_THAT(pathsUnder(index, "night band last train home"), ElementsAre("/1", "/3"));
    EXPECT_THAT(pathsUnder(index, ""), ElementsAre("/4"));
    EXPECT_THAT(pathsUnder(index, "intro"), ElementsAre("/5", "/6"));
    EXPECT_THAT(pathsUnder(index, "nobody"), IsEmpty());
    EXPECT_EQ(index.key(1), "night band last train home");
    EXPECT_EQ(index.keyHalves(5).title, "intro");
}

TEST(LibraryIndex, KeepsEveryFieldAsItWas) {
    const std::vector<Track> tracks = {
        Track{"", "", "", "", {}},
        Track{"\u65E5\u672C", "caf\u00E9", std::string("a\0b", 3), "/e\u0301", 0},
        Track{std::string(3'000'000, 'x'), "A", "G", "/long", INT64_MIN},
    };
    LibraryIndexBuilder builder;
    for (const Track& each : tracks)
        builder.fileTrack(each);
    const LibraryIndex index = builder.finish();
    EXPECT_TRUE(builder.finish().empty());
    ASSERT_EQ(index.trackCount(), tracks.size());
    for (std::size_t position = 0; position < tracks.size(); ++position) {
        const Track& filed = tracks[position];
        const Track found = index.track(position).toTrack();
        EXPECT_EQ(found.title + found.artist + found.genre + found.path,
                  filed.title + filed.artist + filed.genre + filed.path); // equal byte for byte
        EXPECT_EQ(found, filed);
    }
}

TEST(LibraryIndex, CopyDoesNotSeeWhatIsFiledLater) {
    LibraryIndex index = buildIndex(std::vector{track("A", "One", {}, "/1"), track("B", "Two", {}, "/2")});
    const LibraryIndex snapshot = index;
    EXPECT_TRUE(snapshot.sharesTracksWith(index));
    const std::string_view path = index.track(1).path;

    fileTrack(index, track("A", "One", {}, "/3")); // existing key: inserted in the middle
    fileTrack(index, track("C", "Three", {}, "/4"));
    fileTrack(index, track("A", "One", {}, "/1"));
    EXPECT_THAT(pathsOf(allTracks(index)), ElementsAre("/1", "/3", "/1", "/2", "/4"));
    EXPECT_THAT(pathsUnder(index, "b two"), ElementsAre("/2"));
    EXPECT_THAT(pathsUnder(index, "c three"), ElementsAre("/4"));
    EXPECT_EQ(index.key(3), "b two");

    EXPECT_FALSE(snapshot.sharesTracksWith(index));
    EXPECT_THAT(pathsOf(allTracks(snapshot)), ElementsAre("/1", "/2"));
    EXPECT_THAT(pathsUnder(snapshot, "c three"), IsEmpty());
    EXPECT_EQ(path, "/2");

    LibraryIndex branch = snapshot;
    fileTrack(branch, track("D", "Four", {}, "/5"));
    EXPECT_THAT(pathsOf(allTracks(branch)), ElementsAre("/1", "/2", "/5"));
    EXPECT_EQ(index.trackCount(), 5U);
}

/// Compares the table of folders with a loop over all paths.
TEST(LibraryIndex, CountsUnderAFolderAsALoopWould) {
    EXPECT_EQ(countTracksUnderFolder(LibraryIndex(), "/"), 0);
    LibraryIndexBuilder builder;
    std::mt19937 random(9);
    const std::vector<std::string> pieces = {"a", "b", "/", "/", "e", "\u0301", "\u00E9", "\u00E8", "\u65E5"};
    const auto path = [&](std::size_t length) {
        std::string text = "/m/";
        for (; length > 0; --length)
            text += pieces[random() % pieces.size()];
        return text;
    };
    std::string last;
    for (int i = 0; i < 800; ++i) {
        if (i % 9 == 0)
            last = path(4);
        builder.fileTrack(track("x", std::to_string(i % 500), {}, i % 3 == 0 ? path(6) : last + path(1)));
    }
    LibraryIndex index = builder.finish();
    fileTrack(index, track("x", "7", {}, path(5)));
    std::int64_t counted = 0;
    for (int round = 0; round < 200; ++round) {
        std::string folder = round % 2 == 0 ? path(random() % 5)
                                            : std::string(index.track(random() % index.trackCount()).path);
        if (round % 4 == 1)
            folder.resize(folder.rfind('/'));
        std::int64_t expected = 0;
        for (std::size_t position = 0; position < index.trackCount(); ++position)
            expected += hasCanonicalPrefix(index.track(position).path, folder) ? 1 : 0;
        ASSERT_EQ(countTracksUnderFolder(index, folder), expected) << folder;
        counted += expected;
    }
    EXPECT_GT(counted, 2'000);
}

} // namespace
} // namespace orvalen::test
