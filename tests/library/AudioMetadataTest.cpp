#include "library/AudioMetadata.h"

#include "support/Builders.h"
#include "support/TestPlatform.h"

#include <gmock/gmock.h>

namespace orvalen::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

MetadataItem item(std::string name, Expected<std::optional<std::string>> value) {
    return {"id3/" + name, name, std::move(value)};
}

/// Returns tags with a title, an artist and an ID3 tempo.
FakeTags tags(const char* title, const char* artist, const char* tempo) {
    FakeTags result;
    result.common = {{item("title", title), item("artist", artist)}};
    result.formats = {{std::string(id3Format)}};
    result.id3 = {{item("TIT2", title), item("TBPM", tempo)}};
    return result;
}

TEST(AudioMetadata, ParseBPMReadsPlainIntegersOnly) {
    const std::pair<std::string_view, std::optional<std::int64_t>> cases[] = {
        {"128", 128},
        {"+128", 128},
        {"-5", -5},
        {"00000000000000000000128", 128},
        {"9223372036854775808", {}},
        {"128.0", {}},
        {" 128", {}},
        {"128 ", {}},
        {"", {}},
        {"+", {}},
        {"+-1", {}},
        {"１２８", {}}, // full-width digits
        {{"128\0", 4}, {}},
    };
    for (const auto& [text, bpm] : cases)
        EXPECT_EQ(parseBPM(text), bpm) << text;
}

class ReadTrackMetadata : public testing::Test {
protected:
    Track read(const std::string& path, FakeTags fileTags) {
        test.mediaAssets.tags[path] = std::move(fileTags);
        return readTrackMetadata(test.mediaAssets, test.console, path);
    }
    TestPlatform test;
};

TEST_F(ReadTrackMetadata, FallsBackWhereTheTagsSayNothing) {
    EXPECT_EQ(read("/Music/01.mp3", tags("Train", "Night", "123")),
              (Track{"Train", "Night", "", "/Music/01.mp3", 123}));
    EXPECT_EQ(read("/Music/My.Song.wav", {}), (Track{"My.Song", "Unknown", "", "/Music/My.Song.wav", {}}));
    EXPECT_EQ(read("/a.mp3", tags("", "  ", "+96")), (Track{"", "  ", "", "/a.mp3", 96}))
        << "an empty text is a text";

    FakeTags absent;
    absent.common = {{item("Title", "other case"), item("title", std::nullopt),
                      item("artist", failure("damaged")), item("title", "second")}};
    EXPECT_EQ(read("/b.mp3", absent), (Track{"b", "Unknown", "", "/b.mp3", {}})) << "the first item counts";
    EXPECT_THAT(test.console.lines(), IsEmpty());
}

TEST_F(ReadTrackMetadata, TempoComesFromTheFirstID3TempoFrameAlone) {
    FakeTags mp4 = tags("T", "A", "120");
    mp4.formats = {{"com.apple.itunes"}};
    EXPECT_EQ(read("/a.m4a", mp4).bpm, std::nullopt) << "no ID3 tag, no tempo";

    FakeTags several = tags("T", "A", "");
    several.formats = {{"com.apple.itunes", std::string(id3Format)}};
    several.id3 = {{MetadataItem{"tbpm", "", "1"}, MetadataItem{"org.id3.TBPM.2", "", "140"},
                    MetadataItem{"id3/TBPM", "", "150"}}};
    EXPECT_EQ(read("/b.mp3", several).bpm, 140);
    several.id3->at(1).value = "128.0";
    EXPECT_EQ(read("/b.mp3", several).bpm, std::nullopt) << "a later frame does not stand in";
    several.id3->at(1).value = std::optional<std::string>();
    EXPECT_EQ(read("/b.mp3", several).bpm, std::nullopt);
    several.id3 = std::vector<MetadataItem>();
    EXPECT_EQ(read("/b.mp3", several).bpm, std::nullopt);
    EXPECT_THAT(test.console.lines(), IsEmpty());
}

TEST_F(ReadTrackMetadata, EachFailingLoadIsOneLineAndKeepsWhatIsKnown) {
    const FakeTags good = tags("T", "A", "120");
    FakeTags common = good, formats = good, frames = good, value = good;
    common.common = failure("not a media file");
    formats.formats = failure("first");
    frames.id3 = failure("second");
    value.id3 = {{item("TBPM", failure("third"))}};
    EXPECT_EQ(read("/Music/Grüße.mp3", common), (Track{"Grüße", "Unknown", "", "/Music/Grüße.mp3", {}}));
    for (const FakeTags& each : {formats, frames, value})
        EXPECT_EQ(read("/Music/Grüße.mp3", each), (Track{"T", "A", "", "/Music/Grüße.mp3", {}}));
    EXPECT_THAT(test.console.lines(), ElementsAre("Failed to load metadata from Grüße.mp3: not a media file",
                                                  "Failed to load metadata from Grüße.mp3: first",
                                                  "Failed to load metadata from Grüße.mp3: second",
                                                  "Failed to load metadata from Grüße.mp3: third"));
}

class AttachBrowsedFile : public testing::Test {
protected:
    AttachBrowsedFile() {
        test.view.matchedTracks.set(
            {row("First", "One", {track("First", "One")}, true), row("Night Band", "Last Train Home")});
        test.mediaAssets.tags["/USB/x.mp3"] = tags("Other", "Else", "124");
        test.view.trackCount.set(7);
    }
    const MatchedTrack& second() { return test.view.matchedTracks.get().at(1); }

    const Track browsed{"Last Train Home", "Night Band", "", "/USB/x.mp3", 124};
    TestPlatform test;
};

TEST_F(AttachBrowsedFile, MakesTheFileTheRowsChoiceUnderTheWantedNames) {
    test.dialogs.willOpen({"/USB/x.mp3"});
    attachBrowsedFile(test.view, 1);
    EXPECT_FALSE(second().found) << "tags are read off the main thread";
    test.settle();

    EXPECT_THAT(second().options, ElementsAre(browsed));
    EXPECT_EQ(second().selectedTrack, browsed);
    EXPECT_TRUE(second().found);
    EXPECT_FALSE(second().include);
    const LibraryIndex& index = test.view.trackDict.get();
    const PositionRange filed = index.positionsUnder("night band last train home");
    ASSERT_EQ(filed.size(), 1U);
    EXPECT_EQ(index.track(filed.first), TrackView(browsed));
    EXPECT_EQ(test.view.trackCount.get(), 7) << "counted anew only by a scan or a load";
    EXPECT_FALSE(test.support().exists("orvalen.sqlite")) << "no choice is remembered";

    test.dialogs.willOpen({"/USB/x.mp3"});
    attachBrowsedFile(test.view, 1);
    test.settle();
    EXPECT_THAT(second().options, ElementsAre(browsed, browsed)) << "the same file twice is two options";
}

TEST_F(AttachBrowsedFile, TheDialogAsksForOneFileNamesTheWantedLineAndOpensBesideItsCandidates) {
    test.view.musicFolderURLs.set({Location{"/Music"}, Location{"/More"}});
    attachBrowsedFile(test.view, 1);
    test.settle();
    ASSERT_EQ(test.dialogs.opened.size(), 1U);
    const OpenOptions options = test.dialogs.opened.front();
    EXPECT_TRUE(options.files && !options.folders && !options.several);
    EXPECT_THAT(options.types.families, ElementsAre(TypeFamily::mp3Audio, TypeFamily::mpeg4Audio,
                                                    TypeFamily::wavAudio, TypeFamily::movie));
    EXPECT_THAT(options.types.extensions, ElementsAre("aiff", "aif"));
    EXPECT_EQ(options.title, "Browse for file: Night Band – Last Train Home");
    EXPECT_THAT(options.openIn, ElementsAre(Location{"/Music"}, Location{"/"}));
    EXPECT_FALSE(second().found) << "a cancelled dialog changes nothing";
    EXPECT_THAT(test.mediaAssets.opened, IsEmpty());

    MatchedTrack row = second();
    row.options = {{"T", "A", "", "/USB/House/1.mp3", {}}, {"T", "A", "", "/USB/2.mp3", {}}};
    row.selectedTrack = row.options[1];
    test.view.matchedTracks.set({row});
    attachBrowsedFile(test.view, 0);
    EXPECT_THAT(test.dialogs.opened.back().openIn,
                ElementsAre(Location{"/USB"}, Location{"/USB/House"}, Location{"/Music"}, Location{"/"}));
}

TEST_F(AttachBrowsedFile, LandsInWhateverRowHasItsPositionByThen) {
    test.mediaAssets.tags["/USB/x.mp3"].formats = failure("damaged");
    test.dialogs.willOpen({"/USB/x.mp3"});
    test.dialogs.whileOpen = [this] { // a match run ends while the dialog is open
        test.view.matchedTracks.set({row("A", "1"), row("Night Band", "Another Song")});
    };
    attachBrowsedFile(test.view, 1);
    test.settle();
    EXPECT_EQ(second().title, "Another Song");
    EXPECT_EQ(second().selectedTrack, (Track{"Last Train Home", "Night Band", "", "/USB/x.mp3", {}}))
        << "under the name it was picked for, without the tempo that could not be read";
    EXPECT_EQ(test.view.trackDict.get().positionsUnder("night band last train home").size(), 1U);
    EXPECT_THAT(test.console.lines(), ElementsAre("Failed to load BPM from ID3 metadata: damaged"));

    test.dialogs.whileOpen = {};
    test.dialogs.willOpen({"/USB/x.mp3"});
    attachBrowsedFile(test.view, 1);
    test.view.matchedTracks.set({row("A", "1")});
    test.settle();
    EXPECT_FALSE(test.view.matchedTracks.get().front().found) << "no such row any more";
    attachBrowsedFile(test.view, 1);
    EXPECT_EQ(test.dialogs.opened.size(), 2U) << "no row, no dialog";
}

} // namespace
} // namespace orvalen::test
