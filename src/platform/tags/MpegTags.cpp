#include "platform/tags/Id3Tag.h"
#include "platform/tags/TagPlaces.h"

#include <algorithm>
#include <array>

namespace orvalen {

namespace {

/// Where audio or a tag has not begun by then, it will not.
constexpr std::uint64_t searchLimit = 1 << 20;
constexpr std::uint64_t searchStep = 4000;

// Kilobits a second by bit-rate index: MPEG 1 layers I, II, III, then MPEG 2 layer I, then its II and III.
constexpr std::array<std::array<std::uint64_t, 15>, 5> bitRates{{
    {0, 32, 64, 96, 128, 160, 192, 224, 256, 288, 320, 352, 384, 416, 448},
    {0, 32, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320, 384},
    {0, 32, 40, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320},
    {0, 32, 48, 56, 64, 80, 96, 112, 128, 144, 160, 176, 192, 224, 256},
    {0, 8, 16, 24, 32, 40, 48, 56, 64, 80, 96, 112, 128, 144, 160},
}};
constexpr std::array<std::uint64_t, 3> sampleRates{44100, 48000, 32000};

/// The length in bytes of the MPEG audio frame that the four bytes begin; 0 when they begin none.
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

/// Three frames in a row: chance makes one, and now and then two. The very first may be all there is.
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

} // namespace

Expected<TagPlaces> findMpegTags(const ByteSource& file) {
    TagPlaces places;
    places.mayHaveEndTags = true;
    const std::uint64_t limit = std::min(file.size(), searchLimit);
    for (std::uint64_t offset = 0; offset < limit; offset += searchStep) {
        const std::string bytes = file.read(offset, searchStep + 9);
        for (std::uint64_t i = 0; i < searchStep && i < bytes.size(); ++i) {
            const std::string_view rest = std::string_view(bytes).substr(i);
            if (isId3Header(rest)) {
                places.id3 = offset + i;
                return places;
            }
            if (frameLength(bigEndian32(rest)) != 0 && audioBeginsAt(file, offset + i))
                return places;
        }
    }
    const EndTags end = findEndTags(file);
    if (end.ape || end.id3v1)
        return places;
    return failure("The file holds no audio that can be read");
}

} // namespace orvalen
