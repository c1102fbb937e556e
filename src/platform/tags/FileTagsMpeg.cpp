#include "core/Text.h"
#include "platform/tags/Id3Tag.h"
#include "platform/tags/TagText.h"

#include <algorithm>
#include <array>
#include <optional>

namespace orvalen {

namespace {

/// Audio or a tag must start within this number of bytes.
constexpr std::uint64_t searchLimit = 1 << 20;
constexpr std::uint64_t searchStep = 4000;

// Kilobits per second by bit-rate index: MPEG 1 layers I, II, III, then MPEG 2 layer I, then MPEG 2 layers II
// and III.
constexpr std::array<std::array<std::uint64_t, 15>, 5> bitRates{{
    {0, 32, 64, 96, 128, 160, 192, 224, 256, 288, 320, 352, 384, 416, 448},
    {0, 32, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320, 384},
    {0, 32, 40, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320},
    {0, 32, 48, 56, 64, 80, 96, 112, 128, 144, 160, 176, 192, 224, 256},
    {0, 8, 16, 24, 32, 40, 48, 56, 64, 80, 96, 112, 128, 144, 160},
}};
constexpr std::array<std::uint64_t, 3> sampleRates{44100, 48000, 32000};

/// Returns the length in bytes of the MPEG audio frame with this header; 0 if it is not a frame header.
std::uint64_t frameLength(std::uint32_t head) {
    const unsigned version = head >> 19 & 3; // 3: MPEG 1, 2: MPEG 2, 0: MPEG 2.5
    const unsigned layer = 4 - (head >> 17 & 3);
    const unsigned bitRate = head >> 12 & 15;
    const unsigned sampleRate = head >> 10 & 3;
    if (head >> 21 != 0x7FF || version == 1 || layer == 4 || bitRate == 0 || bitRate == 15 || sampleRate == 3)
        return 0;
    const bool first = version == 3;
    const std::size_t table = first ? layer - 1 : layer == 1 ? 3 : 4;
    const std::uint64_t samplesPerSecond = sampleRates[sampleRate] >> (first ? 0 : version == 2 ? 1 : 2);
    const std::uint64_t bytesPerSecond = bitRates[table][bitRate] * 125;
    const std::uint64_t padding = head >> 9 & 1;
    if (layer == 1)
        return (bytesPerSecond * 96 / samplesPerSecond + padding) * 4;
    const std::uint64_t samples = layer == 3 && !first ? 576 : 1152;
    return samples * bytesPerSecond / samplesPerSecond + padding;
}

std::uint64_t frameLengthAt(const ByteSource& file, std::uint64_t offset) {
    return frameLength(bigEndian32(file.read(offset, 4)));
}

/// Requires three frames in a row, because random bytes can look like one or two. At the start of the file,
/// fewer frames are enough if the file ends after them.
bool audioBeginsAt(const ByteSource& file, std::uint64_t offset) {
    std::uint64_t next = offset;
    for (int count = 0; count < 3; ++count) {
        if (next >= file.size())
            return offset == 0 && count > 0;
        const std::uint64_t length = frameLengthAt(file, next);
        if (length == 0)
            return false;
        next += length;
    }
    return true;
}

/// Finds an ID3 tag or audio near the start. Returns the offset of the tag, `file.size()` for audio without a
/// tag, or nullopt.
std::optional<std::uint64_t> findStart(const ByteSource& file) {
    const std::uint64_t limit = std::min(file.size(), searchLimit);
    for (std::uint64_t offset = 0; offset < limit; offset += searchStep) {
        const std::string bytes = file.read(offset, searchStep + 9);
        for (std::uint64_t i = 0; i < searchStep && i < bytes.size(); ++i) {
            const std::string_view rest = std::string_view(bytes).substr(i);
            if (isId3Header(rest))
                return offset + i;
            if (frameLength(bigEndian32(rest)) != 0 && audioBeginsAt(file, offset + i))
                return file.size();
        }
    }
    return std::nullopt;
}

// Older tags are at the end of the file: ID3v1 last, before it an APE tag with its footer.

constexpr std::size_t id3v1Length = 128;
constexpr std::size_t apeFooterLength = 32;

/// Reads items of the form: length of the value, flags, key, zero, value. If a key occurs again, the later
/// item replaces the earlier one. Several values in one item are joined by spaces.
void readApeItems(FileTags& tags, std::string_view items) {
    std::string title;
    std::string artist;
    while (items.size() > 8) {
        const std::size_t length = littleEndian32(items);
        const bool isText = (littleEndian32(items.substr(4)) & 6) == 0;
        items.remove_prefix(8);
        const std::size_t zero = items.find('\0');
        if (zero == std::string_view::npos || length > items.size() - zero - 1)
            break;
        const std::string key = toAsciiLower(items.substr(0, zero));
        std::string value(items.substr(zero + 1, length));
        std::replace(value.begin(), value.end(), '\0', ' ');
        items.remove_prefix(zero + 1 + length);
        if (isText && (key == "title" || key == "artist"))
            (key == "title" ? title : artist) = fromUtf8OrLatin1(value);
    }
    tags.addUnlessEmpty("title", std::move(title));
    tags.addUnlessEmpty("artist", std::move(artist));
}

/// Reads ID3v1 and APE tags. Returns whether the file ends with one.
bool readEndTags(FileTags& tags, const ByteSource& file) {
    std::uint64_t end = file.size();
    std::string id3v1 = end < id3v1Length ? "" : file.read(end - id3v1Length, id3v1Length);
    if (id3v1.starts_with("TAG"))
        end -= id3v1Length;
    else
        id3v1.clear();
    const std::string footer = end < apeFooterLength ? "" : file.read(end - apeFooterLength, apeFooterLength);
    const std::uint64_t apeLength = littleEndian32(std::string_view(footer).substr(
        std::min<std::size_t>(12, footer.size()))); // length of the items and the footer
    const bool hasApe = footer.starts_with("APETAGEX") && apeLength >= apeFooterLength && apeLength <= end;
    if (hasApe && apeLength <= longestText)
        readApeItems(tags, file.read(end - apeLength, static_cast<std::size_t>(apeLength - apeFooterLength)));
    if (!id3v1.empty()) {
        tags.addUnlessEmpty("title", std::string(trimmed(fromLatin1(id3v1.substr(3, 30)))));
        tags.addUnlessEmpty("artist", std::string(trimmed(fromLatin1(id3v1.substr(33, 30)))));
    }
    return hasApe || !id3v1.empty();
}

} // namespace

Expected<FileTags> readMpegTags(const ByteSource& file) {
    FileTags tags;
    const auto start = findStart(file);
    if (start)
        readId3Tag(tags, file, *start);
    if (!tags.hasTitleAndArtist() && !readEndTags(tags, file) && !start)
        return failure("The file contains no readable audio");
    return tags;
}

} // namespace orvalen
