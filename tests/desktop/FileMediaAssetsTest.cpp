#include "platform/tags/FileMediaAssets.h"

#include "desktop/TagBytes.h"
#include "library/AudioMetadata.h"
#include "platform/tags/ReadAhead.h"
#include "support/Fakes.h"
#include "support/TemporaryFolder.h"

#include <chrono>
#include <filesystem>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <thread>

namespace orvalen::test {
namespace {

using namespace std::string_literals;
using namespace std::chrono_literals;

class FileMediaAssetsTest : public testing::Test {
protected:
    Track read(const std::string& path) {
        console.clear();
        return readTrackMetadata(assets, console, path);
    }

    FileMediaAssets assets;
    FakeConsole console;
    TemporaryFolder folder;
};

struct Case {
    const char* quirk;
    std::string bytes;
    std::string title;
    std::string artist;
    std::optional<std::int64_t> bpm = {};
};

/// Returns a tag of this version with a picture and a comment before title, artist and tempo.
std::string fullTag(int version) {
    const bool old = version == 2;
    return id3(version, pictureFrame(version, 3000) + frame(version, old ? "COM" : "COMM", "\0eng\0text"s) +
                            textFrame(version, old ? "TT2" : "TIT2", 0, "Song") +
                            textFrame(version, old ? "TP1" : "TPE1", 0, "Band") +
                            textFrame(version, old ? "TBP" : "TBPM", 0, "128") + pictureFrame(version, 300) +
                            std::string(200, '\0'));
}

const std::string song = textFrame(3, "TIT2", 0, "Song") + textFrame(3, "TPE1", 0, "Band");
const std::string song4 = textFrame(4, "TIT2", 0, "Song") + textFrame(4, "TPE1", 0, "Band");
const std::string title = textFrame(3, "TIT2", 0, "Song");
/// Returns a text frame of version 4 with these flags.
std::string flagged(char flags, std::string_view bytes, int encoding = 1) {
    return textFrame(4, "TIT2", encoding, bytes).replace(9, 1, 1, flags);
}

const std::string emptyTitle = textFrame(3, "TIT2", 0, "");

std::vector<Case> mpegCases() {
    const std::string audio = mpegAudio();
    const std::string extended3 = bigEndian(6, 4) + bigEndian(0, 2) + bigEndian(0, 4);
    const std::string extended4 = synchSafe(6) + bigEndian(1, 1) + bigEndian(0, 1);
    const std::string longText(300, 'x');
    const std::string longName(200, 'x');
    const std::string old = id3v1("Old", "Older");
    const std::string spread = unsynchronised("\xFF\xFE\xFF\0"s);
    const std::string mpeg2Frame = "\xFF\xF3\x80\0"s + std::string(204, '\0');
    const std::string mpeg25Frame = "\xFF\xE3\x80\0"s + std::string(413, '\0');
    const std::string paddedFrame = "\xFF\xE3\x82\0"s + std::string(414, '\0');
    return {
        {"version 2.2", fullTag(2) + audio + old, "Song", "Band", 128},
        {"version 2.3", fullTag(3) + audio + old, "Song", "Band", 128},
        {"version 2.4", fullTag(4) + audio + old, "Song", "Band", 128},
        {"UTF-16 with a mark", id3(3, textFrame(3, "TIT2", 1, "\xFE\xFF\0S\0\xF6"s) + song), "Sö", "Band"},
        {"beyond the first plane", id3(4, textFrame(4, "TIT2", 2, "\xD8\x3C\xDF\xB5\0!"s)), "🎵!", "Unknown"},
        {"UTF-16 with text behind its end", id3(3, textFrame(3, "TIT2", 1, "\xFF\xFES\0o\0\0\0x\0"s)), "So",
         "Unknown"},
        {"UTF-8", id3(4, textFrame(4, "TIT2", 3, "Caf\xC3\xA9")), "Café", "Unknown"},
        {"half a character", id3(4, textFrame(4, "TIT2", 2, "\0a\xD8\x3C\0b"s)), "a\uFFFDb", "Unknown"},
        {"several values in one frame", id3(4, textFrame(4, "TPE1", 3, "First\0Second"s)), "File", "First"},
        {"an empty title", id3(3, emptyTitle) + audio, "", "Unknown"},
        {"lengths of 2.3 in a tag of 2.4", id3(4, "APIC" + bigEndian(300, 4) + "\0\0"s + longText + song4),
         "Song", "Band"},
        {"a length of 2.3 beyond seven bits in a tag of 2.4",
         id3(4, "TIT2" + bigEndian(201, 4) + "\0\0\0"s + longName + song4), longName, "Band"},
        {"names of 2.2 in a tag of 2.3",
         id3(3, textFrame(3, "TT2\0"s, 0, "Song") + textFrame(3, "TBP\0"s, 0, "99")), "Song", "Unknown", 99},
        {"unsynchronised", id3(3, unsynchronised(textFrame(3, "TIT2", 1, "\xFF\xFE\xFF\0"s) + song), 0x80),
         "ÿ", "Band"},
        {"unsynchronised, version 2.4", id3(4, textFrame(4, "TIT2", 1, spread), 0x80), "ÿ", "Unknown"},
        {"one unsynchronised frame of 2.4", id3(4, flagged('\2', spread)), "ÿ", "Unknown"},
        {"a frame of 2.4 with its length in front",
         id3(4, frame(4, "TIT2", synchSafe(5) + "\0Song"s).replace(9, 1, 1, '\1')), "Song", "Unknown"},
        {"an encrypted frame", id3(4, flagged('\4', "zzzz", 0) + song4), "File", "Band"},
        {"the compression bit of 2.2", id3(2, textFrame(2, "TT2", 0, "Song"), 0x40), "Song", "Unknown"},
        {"an extended header of 2.3", id3(3, extended3 + song, 0x40), "Song", "Band"},
        {"an extended header of 2.4", id3(4, extended4 + song4, 0x40), "Song", "Band"},
        {"a tag that claims 256 MB", id3Header(3, (1 << 28) - 1) + song + audio, "Song", "Band"},
        {"a frame that claims 2 GB", id3(3, song + "APIC\x7F\xFF\xFF\xFF\0\0zz"s) + audio, "Song", "Band"},
        {"empty frames before and between",
         id3(3, frame(3, "TALB", "") + frame(3, "TIT2", "") + song) + audio, "Song", "Band"},
        {"an empty frame before padding",
         id3(3, title + frame(3, "TPE1", "") + std::string(50, '\0')) + audio, "Song", "Unknown"},
        {"Latin-1 marked as UTF-8", id3(4, textFrame(4, "TIT2", 3, "Caf\xE9") + song4), "Café", "Band"},
        {"UTF-16 without a mark, either order",
         id3(3, textFrame(3, "TIT2", 1, "S\0\xF6\0n\0g\0"s) + textFrame(3, "TPE1", 1, "\0B\0y"s)), "Söng",
         "By"},
        {"one byte a letter marked as UTF-16", id3(3, textFrame(3, "TIT2", 1, "Caf\xE9\0"s)), "Café",
         "Unknown"},
        {"UTF-16 of no text without a mark", id3(3, textFrame(3, "TIT2", 1, "\0\0"s)), "", "Unknown"},
        {"an unknown encoding", id3(3, textFrame(3, "TIT2", 9, "Song") + textFrame(3, "TPE1", 9, "\1\2\3")),
         "Song", "Unknown"},
        {"compressed, version 2.3", id3(3, compressedFrame(3, "TIT2", "\0Song"s)) + audio, "Song", "Unknown"},
        {"compressed, version 2.4", id3(4, compressedFrame(4, "TIT2", "\0Song"s)) + audio, "Song", "Unknown"},
        {"compressed and damaged",
         id3(3, "TIT2" + bigEndian(8, 4) + "\0\x80"s + "\0\0\0\4oops"s + song) + audio, "File", "Band"},
        {"a frame name of rubbish", id3(3, title + frame(3, "t!1 ", "zz") + song), "Song", "Unknown"},
        {"junk before the tag", std::string(7995, '\0') + id3(3, song) + audio, "Song", "Band"},
        {"junk before the audio", std::string(3000, '\0') + audio, "File", "Unknown"},
        {"ID3v1 for what ID3v2 leaves out", id3(3, title) + audio + old, "Song", "Older"},
        {"ID3v1 does not fill an empty title", id3(3, emptyTitle) + audio + id3v1("Old", "Caf\xE9"), "",
         "Café"},
        {"MPEG 2 without a tag", mpeg2Frame + mpeg2Frame + mpeg2Frame + mpeg2Frame, "File", "Unknown"},
        {"MPEG 2.5 with padding", paddedFrame + mpeg25Frame + paddedFrame + paddedFrame, "File", "Unknown"},
        {"one frame of audio", mpeg25Frame, "File", "Unknown"},
        {"APE with several values", audio + ape("Song", "One\0Two"s), "Song", "One Two"},
        {"an empty ID3v1", audio + id3v1("", ""), "File", "Unknown"},
        {"APE before ID3v1", audio + ape("A longer sóng", "Bånd") + id3v1("A longer", "Band"),
         "A longer sóng", "Bånd"},
        {"APE with a picture under a title's name", audio + ape("Song", "Band").replace(4, 1, "\2"), "File",
         "Band"},
        {"APE that claims more than there is", audio + ape("Song", "Band").replace(49, 4, "\xFF\xFF\xFF\x7F"),
         "File", "Unknown"},
    };
}

std::vector<Case> otherCases() {
    const std::string nested = nestedBoxes("moov", 130'000);
    const std::string cover = box("covr", box("data", bigEndian(13, 4) + std::string(5000, 'p')));
    const std::string texts = mpeg4Text("\251nam", "Song") + mpeg4Text("\251ART", "Band");
    const std::string longBox = bigEndian(1, 4) + "free" + bigEndian(36, 8) + std::string(20, '\0');
    return {
        {"AIFC", aiff(aiffChunk("NAME", "Song") + aiffChunk("AUTH", "Band")).replace(8, 4, "AIFC"), "Song",
         "Band"},
        {"MPEG-4 that begins with its tags", mpeg4(texts).substr(16), "Song", "Band"},
        {"MPEG-4 with a length of 64 bits", mpeg4(texts).insert(16, longBox), "Song", "Band"},
        {"MPEG-4 with a box up to the end", mpeg4(texts).replace(16, 4, 4, '\0'), "Song", "Band"},
        {"WAV whose padding is no zero",
         wav(riffChunk("note", "odd").replace(11, 1, "x") + riffChunk("id3 ", fullTag(4))), "Song", "Band",
         128},
        {"WAV with an INFO list",
         wav(riffChunk("LIST", "INFO" + riffChunk("INAM", "Song\0x"s) + riffChunk("IART", "Caf\xE9"))),
         "Song", "Café"},
        {"WAV with both",
         wav(riffChunk("LIST", "INFO" + riffChunk("INAM", "Old") + riffChunk("IART", "Band")) +
             riffChunk("ID3 ", id3(3, textFrame(3, "TIT2", 0, "New") + textFrame(3, "TBPM", 0, "90")))),
         "New", "Band", 90},
        {"WAV with an id3 chunk in small letters", wav(riffChunk("id3 ", fullTag(4))), "Song", "Band", 128},
        {"WAV whose data never ends", wav("data\xFF\xFF\xFF\xFF" + std::string(50, '1')), "File", "Unknown"},
        {"AIFF with an ID3 chunk after an odd one",
         aiff(aiffChunk("SSND", "123") + aiffChunk("ID3 ", fullTag(2))), "Song", "Band", 128},
        {"AIFF without padding", aiff("SSND" + bigEndian(3, 4) + "123" + aiffChunk("ID3 ", id3(4, song4))),
         "Song", "Band"},
        {"AIFF with texts of its own", aiff(aiffChunk("NAME", "Song ") + aiffChunk("AUTH", "Band")), "Song",
         "Band"},
        {"MPEG-4, whose tempo is not asked for",
         mpeg4(mpeg4Text("\251nam", "Sóng") + cover + mpeg4Text("\251ART", "Band") +
               box("tmpo", box("data", bigEndian(21, 4) + bigEndian(0, 4) + bigEndian(120, 2)))),
         "Sóng", "Band"},
        {"MPEG-4 with boxes nested without end",
         mpeg4(nested + mpeg4Text("\251nam", "Song") + box("\251ART", nested)), "Song", "Unknown"},
        {"MPEG-4 with Latin-1 for UTF-8", mpeg4(mpeg4Text("\251nam", "Caf\xE9")), "Café", "Unknown"},
        {"MPEG-4 with an empty title", mpeg4(mpeg4Text("\251nam", "")), "", "Unknown"},
        {"MPEG-4 without a list", box("ftyp", "M4A ") + box("moov", box("mvhd", std::string(100, '\0'))),
         "File", "Unknown"},
    };
}

/// “File” and “Unknown” are the defaults for missing tags.
TEST_F(FileMediaAssetsTest, ReadsTheTagsOfTheWild) {
    for (const auto& cases : {mpegCases(), otherCases()})
        for (const Case& row : cases) {
            const Track track = read(folder.write("File.mp3", row.bytes));
            EXPECT_EQ(track.title, row.title) << row.quirk;
            EXPECT_EQ(track.artist, row.artist) << row.quirk;
            EXPECT_EQ(track.bpm, row.bpm) << row.quirk;
            EXPECT_TRUE(console.lines().empty()) << row.quirk << ": " << console.lines().front();
        }
}

TEST_F(FileMediaAssetsTest, ReadsNeitherPicturesNorAudio) {
    const std::string tag = id3(3, song + pictureFrame(3, 300'000) + textFrame(3, "TBPM", 0, "128"));
    const std::string cover = box("covr", box("data", bigEndian(13, 4) + std::string(300'000, 'p')));
    for (const std::string& bytes :
         {tag + std::string(100'000, '\0'),
          aiff(aiffChunk("SSND", std::string(500'000, 'x')) + aiffChunk("ID3 ", tag)),
          wav(riffChunk("data", std::string(500'000, 'x')) + riffChunk("id3 ", tag)),
          mpeg4(cover + mpeg4Text("\251nam", "Song") + cover + mpeg4Text("\251ART", "Band"))}) {
        const std::string path = folder.write("File.mp3", bytes);
        const double before = bytesReadByThisProcess();
        EXPECT_EQ(read(path).artist, "Band");
        EXPECT_LE(bytesReadByThisProcess() - before, 32'000) << bytes.substr(0, 12);
    }
}

TEST_F(FileMediaAssetsTest, WritesOneErrorLineForAnUnreadableFile) {
    folder.makeFolder("Live.mp3");
    folder.write("empty.mp3");
    folder.write("text.mp3", std::string(50'000, 'x'));
    folder.write("zeros.wav", std::string(50'000, '\0'));
    folder.write("head.m4a", mpeg4("").substr(0, 40));
    folder.write("zeros.m4a", box("ftyp", "") + std::string(40'000, '\0'));
    ASSERT_EQ(::mkfifo(folder.path("pipe.mp3").c_str(), 0600), 0);
    std::filesystem::create_symlink(folder.path("pipe.mp3"), folder.path("link.mp3"));
    for (const char* name : {"missing.mp3", "Live.mp3", "empty.mp3", "text.mp3", "zeros.wav", "head.m4a",
                             "zeros.m4a", "pipe.mp3", "link.mp3"}) {
        EXPECT_EQ(read(folder.path(name)).artist, "Unknown") << name;
        ASSERT_EQ(console.lines().size(), 1U) << name;
        EXPECT_TRUE(console.lines()[0].starts_with("Failed to load metadata from "s + name + ": ")) << name;
    }
}

TEST_F(FileMediaAssetsTest, RefusesTextsOfMoreThanAMegabyte) {
    const std::string most(1 << 20, 'x');
    const auto compressed = [](int version, std::string_view name, const std::string& text) {
        return compressedFrame(version, name, '\0' + text);
    };
    const std::string artist = textFrame(3, "TPE1", 0, "Band");
    for (const std::string& bytes :
         {id3(3, textFrame(3, "TIT2", 0, most) + artist), id3(3, compressed(3, "TIT2", most) + artist),
          id3(4, compressed(4, "TPE1", std::string(100'000'000, 'x'))),
          mpeg4(mpeg4Text("\251nam", most + "x"))}) {
        const Track track = read(folder.write("File.mp3", bytes));
        EXPECT_EQ(track.title + "/" + track.artist, "File/Unknown");
        EXPECT_EQ(console.lines(),
                  std::vector<std::string>{"Failed to load metadata from File.mp3: A text of the "
                                           "tags is longer than 1 MB"});
    }
    const std::string fits = most.substr(1);
    EXPECT_EQ(read(folder.write("File.mp3", id3(3, compressed(3, "TIT2", fits)))).title, fits);
    EXPECT_EQ(read(folder.write("File.mp3", id3(3, artist + compressed(3, "TBPM", most)))).artist, "Band");
    EXPECT_EQ(console.lines().size(), 1U);
}

/// Files that cannot be read are skipped. The files are in the page cache, because they have just been
/// written.
TEST(ReadAhead, ReadsTheHeadsOfTheFirstFilesAndRestsWhenTheyAreCached) {
    TemporaryFolder folder;
    folder.makeFolder("Live.mp3");
    ReadAhead ahead;
    ahead.passOne(); // may be called more often than expect()
    for (const char* unreadable : {"missing.mp3", "Live.mp3"})
        ahead.expect(folder.path(unreadable));
    const double before = bytesReadByThisProcess();
    for (int i = 0; i < 400; ++i)
        ahead.expect(folder.write(std::to_string(i) + ".mp3",
                                  id3(3, textFrame(3, "TIT2", 0, "Song")) + std::string(8192, '\0')));
    const auto filesRead = [&] { return (bytesReadByThisProcess() - before) / 4096; };
    for (int tries = 0; tries < 500 && filesRead() < 60; ++tries)
        std::this_thread::sleep_for(10ms);
    EXPECT_GE(filesRead(), 60);
    std::this_thread::sleep_for(50ms);
    EXPECT_LE(filesRead(), 300);
}

} // namespace
} // namespace orvalen::test
