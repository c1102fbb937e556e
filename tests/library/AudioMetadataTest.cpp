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

TEST(ReadTrackMetadata, TakesEachTextFromTheTagsOrSaysWhyNot) {
    FakeTags firstItems, several, laterNumber, noValue, noFrame;
    firstItems.common = {{item("Title", "other case"), item("title", std::nullopt),
                          item("artist", failure("damaged")), item("title", "second")}};
    several = tags("T", "A", "");
    several.formats = {{"com.apple.itunes", std::string(id3Format)}};
    several.id3 = {{MetadataItem{"tbpm", "", "1"}, MetadataItem{"org.id3.TBPM.2", "", "140"},
                    MetadataItem{"id3/TBPM", "", "150"}}};
    laterNumber = noValue = noFrame = several;
    laterNumber.id3->at(1).value = "128.0";
    noValue.id3->at(1).value = std::optional<std::string>();
    noFrame.id3 = std::vector<MetadataItem>();
    FakeTags mp4, badFile, badFormats, badFrames, badValue;
    mp4 = badFile = badFormats = badFrames = badValue = tags("T", "A", "120");
    mp4.formats = {{"com.apple.itunes"}};
    badFile.common = failure("not a media file");
    badFormats.formats = failure("first");
    badFrames.id3 = failure("second");
    badValue.id3 = {{item("TBPM", failure("third"))}};
    const struct {
        const char* quirk;
        FakeTags tags;
        Track expected; ///< without the path
        const char* error = "";
    } cases[] = {
        {"all tags", tags("Train", "Night", "123"), {"Train", "Night", "", "", 123}},
        {"no tags", {}, {"My.Grüße", "Unknown", "", "", {}}},
        {"an empty text is a text", tags("", "  ", "+96"), {"", "  ", "", "", 96}},
        {"the first item of a name counts", firstItems, {"My.Grüße", "Unknown", "", "", {}}},
        {"a tempo without an ID3 tag", mp4, {"T", "A", "", "", {}}},
        {"several tempo frames", several, {"T", "A", "", "", 140}},
        {"a later frame does not stand in", laterNumber, {"T", "A", "", "", {}}},
        {"a frame without a value", noValue, {"T", "A", "", "", {}}},
        {"no frame", noFrame, {"T", "A", "", "", {}}},
        {"an unreadable file", badFile, {"My.Grüße", "Unknown", "", "", {}}, "not a media file"},
        {"unreadable formats", badFormats, {"T", "A", "", "", {}}, "first"},
        {"unreadable frames", badFrames, {"T", "A", "", "", {}}, "second"},
        {"an unreadable tempo", badValue, {"T", "A", "", "", {}}, "third"},
    };
    for (const auto& c : cases) {
        FakeMediaAssets assets;
        FakeConsole console;
        assets.tags["/Music/My.Grüße.mp3"] = c.tags;
        Track track = readTrackMetadata(assets, console, "/Music/My.Grüße.mp3");
        EXPECT_EQ(std::exchange(track.path, ""), "/Music/My.Grüße.mp3");
        EXPECT_EQ(track, c.expected) << c.quirk;
        std::vector<std::string> lines;
        if (*c.error != '\0')
            lines.push_back(std::string("Failed to load metadata from My.Grüße.mp3: ") + c.error);
        EXPECT_EQ(console.lines(), lines) << c.quirk;
    }
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
    EXPECT_TRUE(test.view.hasBrowsedFiles.get()) << "the rows are worth keeping";
    EXPECT_FALSE(test.support().exists("orvalen.sqlite")) << "no choice is remembered";

    attachFile(test.view, 1, "/USB/x.mp3");
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
