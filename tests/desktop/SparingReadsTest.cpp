#include "core/Files.h"
#include "core/Text.h"
#include "desktop/TagBytes.h"
#include "library/AudioMetadata.h"
#include "platform/tags/ByteSource.h"
#include "platform/tags/FileMediaAssets.h"
#include "support/Fakes.h"
#include "support/Folders.h"
#include "support/TemporaryFolder.h"

#include <QString>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <random>
#include <taglib/aifffile.h>
#include <taglib/apetag.h>
#include <taglib/id3v1tag.h>
#include <taglib/id3v2tag.h>
#include <taglib/infotag.h>
#include <taglib/mp4file.h>
#include <taglib/mp4tag.h>
#include <taglib/mpegfile.h>
#include <taglib/textidentificationframe.h>
#include <taglib/wavfile.h>

namespace orvalen::test {
namespace {

/// TagLib keeps UTF-16 units in wide characters; its own conversion loses a text with half a character.
std::string toUtf8(const TagLib::String& text) {
    const TagLib::wstring wide = text.toWString();
    return QString::fromStdU16String(std::u16string(wide.begin(), wide.end())).toStdString();
}

struct Texts {
    std::optional<std::string> title;
    std::optional<std::string> artist;
    std::optional<std::int64_t> bpm;

    bool operator==(const Texts&) const = default;
};

std::ostream& operator<<(std::ostream& stream, const Texts& texts) {
    return stream << texts.title.value_or("(none)") << " / " << texts.artist.value_or("(none)") << " / "
                  << (texts.bpm ? std::to_string(*texts.bpm) : "(none)");
}

void addId3(Texts& texts, const TagLib::ID3v2::Tag* tag) {
    const auto first = [&](const char* name) -> std::optional<std::string> {
        const auto& frames = tag->frameList(name);
        const auto* frame = frames.isEmpty()
                                ? nullptr
                                : dynamic_cast<const TagLib::ID3v2::TextIdentificationFrame*>(frames.front());
        if (!frame)
            return {};
        return frame->fieldList().isEmpty() ? std::string() : toUtf8(frame->fieldList().front());
    };
    if (!tag)
        return;
    texts.title = first("TIT2");
    texts.artist = first("TPE1");
    if (const auto tempo = first("TBPM"))
        texts.bpm = parseBPM(*tempo);
}

void addMissing(Texts& texts, const TagLib::Tag* tag) {
    if (tag && !texts.title && !tag->title().isEmpty())
        texts.title = toUtf8(tag->title());
    if (tag && !texts.artist && !tag->artist().isEmpty())
        texts.artist = toUtf8(tag->artist());
}

/// The same file as TagLib reads it by itself, whole; nothing when it calls the file invalid.
std::optional<Texts> readWhole(const std::string& path) {
    Texts texts;
    const std::string extension = std::filesystem::path(path).extension().string();
    if (extension == ".mp3") {
        TagLib::MPEG::File file(path.c_str(), false);
        if (!file.isValid())
            return {};
        addId3(texts, file.ID3v2Tag());
        addMissing(texts, file.APETag());
        addMissing(texts, file.ID3v1Tag());
    } else if (extension == ".wav") {
        TagLib::RIFF::WAV::File file(path.c_str(), false);
        if (!file.isValid())
            return {};
        addId3(texts, file.ID3v2Tag());
        addMissing(texts, file.InfoTag());
    } else if (extension == ".aiff" || extension == ".aif") {
        TagLib::RIFF::AIFF::File file(path.c_str(), false);
        if (!file.isValid())
            return {};
        addId3(texts, file.tag());
    } else {
        TagLib::MP4::File file(path.c_str(), false);
        if (!file.isValid())
            return {};
        const auto first = [&](const char* name) -> std::optional<std::string> {
            if (!file.tag()->contains(name))
                return {};
            const auto values = file.tag()->item(name).toStringList();
            return values.isEmpty() ? std::string() : toUtf8(values.front());
        };
        texts.title = first("\251nam");
        texts.artist = first("\251ART");
    }
    return texts;
}

/// By way of the program; nothing when the file is no readable media.
std::optional<Texts> readSparingly(const std::string& path) {
    FileMediaAssets assets;
    FakeConsole console;
    const auto asset = assets.open(path);
    const auto items = asset->commonMetadata();
    if (!items)
        return {};
    const auto first = [&](std::string_view key) -> std::optional<std::string> {
        for (const MetadataItem& item : *items)
            if (item.commonKey == key)
                return item.value.value();
        return {};
    };
    return Texts{first("title"), first("artist"), readTempoFrame(*asset, console, "")};
}

struct File {
    std::string extension;
    std::string bytes;
};

/// The samples, and files whose tags hold more than theirs.
std::vector<File> files() {
    std::vector<File> result;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(ORVALEN_SAMPLES_DIR))
        if (entry.is_regular_file())
            result.push_back(
                {entry.path().extension().string(), readWholeFile(entry.path().string()).value()});
    for (const int version : {2, 3, 4}) {
        const bool old = version == 2;
        const std::string texts = textFrame(version, old ? "TT2" : "TIT2", 0, "A song of some length") +
                                  textFrame(version, old ? "TP1" : "TPE1", 0, "The band") +
                                  textFrame(version, old ? "TBP" : "TBPM", 0, "128");
        const std::string comment = frame(version, old ? "COM" : "COMM", std::string("\0eng\0something", 14));
        const std::string tag = id3(version, pictureFrame(version, 3000) + comment + texts +
                                                 pictureFrame(version, 300) + std::string(200, '\0'));
        result.push_back({".mp3", tag + mpegAudio() + id3v1("Old", "Older")});
        result.push_back({".aiff", aiff(aiffChunk("SSND", std::string(301, 'x')) + aiffChunk("ID3 ", tag))});
        result.push_back(
            {".wav", wav(riffChunk("LIST", "INFO" + riffChunk("INAM", "Old")) + riffChunk("id3 ", tag))});
    }
    result.push_back({".mp3", mpegAudio() + ape("Song", "Band") + id3v1("Old", "Older")});
    result.push_back({".m4a", mpeg4(mpeg4Text("\251nam", "Song") +
                                    box("covr", box("data", bigEndian(13, 4) + std::string(5000, 'p'))) +
                                    mpeg4Text("\251ART", "Band"))});
    return result;
}

class SparingReads : public testing::Test {
protected:
    std::string write(const File& file) { return folder.write("file" + file.extension, file.bytes); }
    TemporaryFolder folder;
};

/// What this process has read so far, by its own calls.
double bytesRead() {
    std::ifstream stream("/proc/self/io");
    std::string name;
    double value = 0;
    stream >> name >> value;
    EXPECT_EQ(name, "rchar:");
    return value;
}

TEST_F(SparingReads, LeavePicturesAndAudioAlone) {
    const std::string texts = textFrame(3, "TIT2", 0, "Song") + textFrame(3, "TPE1", 0, "Band");
    const std::string tag = id3(3, texts + pictureFrame(3, 300'000) + textFrame(3, "TBPM", 0, "128"));
    const std::string cover = box("covr", box("data", bigEndian(13, 4) + std::string(300'000, 'p')));
    const File cases[] = {
        {".mp3", tag + std::string(100'000, '\0')},
        {".aiff", aiff(aiffChunk("SSND", std::string(500'000, 'x')) + aiffChunk("ID3 ", tag))},
        {".wav", wav(riffChunk("data", std::string(500'000, 'x')) + riffChunk("id3 ", tag))},
        {".m4a", mpeg4(cover + mpeg4Text("\251nam", "Song") + cover + mpeg4Text("\251ART", "Band"))},
    };
    for (const File& file : cases) {
        const std::string path = write(file);
        const double before = bytesRead();
        const auto read = readSparingly(path);
        const double after = bytesRead();
        EXPECT_LE(after - before, 32'000) << file.extension;
        ASSERT_TRUE(read) << file.extension;
        EXPECT_EQ(read->title, "Song") << file.extension;
    }
}

std::string damaged(const File& original, std::mt19937& random) {
    const auto below = [&](std::size_t limit) {
        return std::uniform_int_distribution<std::size_t>(0, limit - 1)(random);
    };
    std::string bytes = original.bytes;
    const std::size_t reach = std::min<std::size_t>(bytes.size(), 400);
    for (std::size_t count = below(3) + 1; count > 0; --count) {
        const bool atEnd = below(2) == 0;
        const std::size_t place = atEnd ? bytes.size() - 1 - below(reach) : below(reach);
        bytes[place] = static_cast<char>(below(3) == 0 ? below(4) : below(256));
    }
    // What tells the kind of file and of tag stays: of that, TagLib believes the file's name and less.
    const bool isMp3 = original.extension == ".mp3";
    const std::size_t tag = original.bytes.find("ID3", isMp3 ? 0 : original.bytes.find("ID3 ") + 1);
    if (tag != std::string::npos)
        bytes.replace(tag, 6, original.bytes, tag, 6);
    if (!isMp3)
        bytes.replace(0, 12, original.bytes, 0, 12);
    if (below(5) == 0)
        bytes.resize(1 + below(bytes.size()));
    return bytes;
}

/// Whether a chunk with tags goes on behind the end of a WAV or AIFF file. TagLib then leaves it out; we take
/// what is there.
bool hasCutOffTags(const File& file) {
    if (file.extension == ".mp3")
        return false;
    const bool isAiff = file.extension == ".aiff";
    for (const char* name : {"ID3 ", "id3 ", "LIST"}) {
        const std::size_t chunk = file.bytes.find(name);
        if (chunk == std::string::npos || chunk + 8 > file.bytes.size())
            continue;
        const std::string_view length = std::string_view(file.bytes).substr(chunk + 4, 4);
        if (chunk + 8 + (isAiff ? bigEndian32(length) : littleEndian32(length)) > file.bytes.size())
            return true;
    }
    return false;
}

/// Whether a text is invalid in its encoding. TagLib then gives an empty text, or the one of a lesser tag, or
/// Chinese letters for an unknown encoding; the program reads the text as Latin-1.
bool hasInvalidText(const std::string& bytes) {
    for (const char* name : {"TIT2", "TPE1", "Title", "Artist"}) {
        const std::size_t place = bytes.find(name);
        const bool isFrame = name[0] == 'T' && name[1] != 'i';
        if (place == std::string::npos || (isFrame && place + 11 > bytes.size()))
            continue;
        const char encoding = isFrame ? bytes[place + 10] : '\3';
        const std::size_t begin = place + (isFrame ? 11 : std::string_view(name).size() + 1);
        const std::size_t length = isFrame ? bigEndian32(std::string_view(bytes).substr(place + 4)) - 1
                                           : littleEndian32(std::string_view(bytes).substr(place - 8));
        if (encoding < 0 || encoding > 3 ||
            (encoding == 3 && begin < bytes.size() && !isValidUtf8(bytes.substr(begin, length))))
            return true;
    }
    return false;
}

/// The files as they are, then with bytes of their tags changed at random: what TagLib reads in the whole
/// file, the program reads as well.
TEST_F(SparingReads, TellTheSameAsTheWholeFile) {
    std::mt19937 random(20'240'615); // NOLINT: the same damage every time
    std::size_t compared = 0;
    std::size_t readable = 0;
    for (const File& original : files()) {
        const std::string whole = write(original);
        EXPECT_EQ(readSparingly(whole).value(), readWhole(whole).value()) << original.extension;
        for (int round = 0; round < 60; ++round) {
            const File file{original.extension, damaged(original, random)};
            const std::string path = write(file);
            ++compared;
            const auto expected = readWhole(path);
            const auto sparing = readSparingly(path);
            if (!expected || !sparing || hasCutOffTags(file) || hasInvalidText(file.bytes))
                continue;
            ++readable;
            EXPECT_EQ(*sparing, *expected) << file.extension << " in round " << round;
        }
    }
    EXPECT_GT(readable * 10, compared * 7);
}

} // namespace
} // namespace orvalen::test
