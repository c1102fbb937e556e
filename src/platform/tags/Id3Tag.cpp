#include "platform/tags/Id3Tag.h"

#include "platform/tags/TagText.h"

#include <algorithm>
#include <array>
#include <zlib.h>

namespace orvalen {

namespace {

constexpr std::size_t tagHeaderLength = 10;
constexpr std::uint64_t longestWholeTag = 16 << 20; ///< bytes read of a tag that is read as a whole
constexpr int mostFrames = 10'000;                  ///< a tag with more frames is damaged

constexpr unsigned char unsynchronised = 0x80;
constexpr unsigned char extendedHeader = 0x40;

unsigned char byteAt(std::string_view bytes, std::size_t place) {
    return place < bytes.size() ? static_cast<unsigned char>(bytes[place]) : 0;
}

// ID3 tags can avoid byte pairs that look like the start of an MPEG frame. "Synchsafe" numbers use only seven
// bits of each byte. "Unsynchronised" content has zero bytes inserted after 0xFF.

/// Returns a number from four bytes of seven bits each.
std::uint32_t synchSafe(std::string_view bytes) {
    std::uint32_t result = 0;
    for (std::size_t i = 0; i < 4; ++i)
        result = result << 7 | (byteAt(bytes, i) & 0x7FU);
    return result;
}

bool isSynchSafe(std::string_view bytes) {
    return std::all_of(bytes.begin(), bytes.end(), [](char byte) { return (byte & 0x80) == 0; });
}

/// Removes the zero byte after every 0xFF.
std::string synchronised(std::string_view bytes) {
    std::string result;
    result.reserve(bytes.size());
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        result += bytes[i];
        if (byteAt(bytes, i) == 0xFF && i + 1 < bytes.size() && bytes[i + 1] == 0)
            ++i;
    }
    return result;
}

/// Decompresses the bytes. Stops after `longestText` + 1 bytes. Returns nullopt for damaged bytes.
std::optional<std::string> inflated(std::string_view bytes) {
    std::string result(longestText + 1, '\0');
    uLongf length = result.size();
    const int status = ::uncompress(reinterpret_cast<Bytef*>(result.data()), &length,
                                    reinterpret_cast<const Bytef*>(bytes.data()), bytes.size());
    if (status != Z_OK && status != Z_BUF_ERROR) // Z_BUF_ERROR means that there is more text
        return std::nullopt;
    result.resize(length);
    return result;
}

struct WantedFrame {
    std::string_view oldName; ///< names of version 2; some programs write them into tags of version 3
    std::string_view name;
    const char* commonKey;
};
constexpr std::array<WantedFrame, 3> wantedFrames{
    {{"TT2", "TIT2", "title"}, {"TP1", "TPE1", "artist"}, {"TBP", "TBPM", ""}}};

/// Reads the frames of a tag of one version.
class FrameReader {
public:
    FrameReader(const ByteSource& source, unsigned version, bool isUnsynchronised)
        : source_(source), version_(version), isUnsynchronised_(isUnsynchronised) {}

    /// Adds the wanted frames between `place` and `end`. Stops when all are found, and at the first bytes
    /// that are not a frame. Skips empty frames.
    void read(FileTags& tags, std::uint64_t place, std::uint64_t end) const {
        std::array<bool, wantedFrames.size()> found{};
        for (int count = 0; count < mostFrames && place + headerLength() < end; ++count) {
            const std::string header = source_.read(place, headerLength());
            const std::uint64_t length = contentLength(header, place);
            if (header.size() < headerLength() || !isFrameName(header) || length > end - place)
                return;
            place += headerLength();
            const std::size_t kind = kindOf(header);
            if (length > 0 && kind < wantedFrames.size() && !found[kind]) {
                found[kind] = true;
                add(tags, wantedFrames[kind], value(header, {place, std::min(length, end - place)}));
                if (std::all_of(found.begin(), found.end(), [](bool each) { return each; }))
                    return;
            }
            place += length;
        }
    }

private:
    using Value = Expected<std::optional<std::string>>;

    std::size_t headerLength() const { return version_ == 2 ? 6 : 10; }
    std::size_t nameLength() const { return version_ == 2 ? 3 : 4; }

    bool isFrameName(std::string_view bytes) const {
        if (bytes.size() < nameLength())
            return false;
        const std::string_view name = bytes.substr(0, hasOldName(bytes) ? 3 : 4);
        return std::all_of(name.begin(), name.end(), [](char letter) {
            return (letter >= 'A' && letter <= 'Z') || (letter >= '0' && letter <= '9');
        });
    }

    bool hasOldName(std::string_view bytes) const {
        return version_ == 2 || (version_ == 3 && byteAt(bytes, 3) == 0);
    }

    /// Returns the index into `wantedFrames`, or wantedFrames.size() for other frames.
    std::size_t kindOf(std::string_view header) const {
        const bool old = hasOldName(header);
        const auto* const found =
            std::find_if(wantedFrames.begin(), wantedFrames.end(), [&](const WantedFrame& frame) {
                return header.substr(0, old ? 3 : 4) == (old ? frame.oldName : frame.name);
            });
        return static_cast<std::size_t>(found - wantedFrames.begin());
    }

    std::uint64_t contentLength(std::string_view header, std::uint64_t place) const {
        if (header.size() < headerLength())
            return 0;
        if (version_ == 2)
            return bigEndian32(header.substr(2)) & 0xFFFFFF;
        const std::uint32_t plain = bigEndian32(header.substr(4));
        if (version_ == 3)
            return plain;
        // Version 4 needs synchsafe lengths, but some programs write plain ones. The right length is the one
        // that leads to the name of the next frame.
        const std::uint32_t safe = synchSafe(header.substr(4));
        if (!isSynchSafe(header.substr(4, 4)))
            return plain;
        if (safe > 127 && !nameStandsAt(place + 10 + safe) && nameStandsAt(place + 10 + plain))
            return plain;
        return safe;
    }

    bool nameStandsAt(std::uint64_t place) const { return isFrameName(source_.read(place, nameLength())); }

    Value value(std::string_view header, const ByteRange& content) const {
        const unsigned flags = version_ == 2 ? 0U : byteAt(header, 9);
        const bool isNew = version_ == 4;
        const bool isCompressed = (flags & (isNew ? 0x08U : 0x80U)) != 0;
        const bool isEncrypted = (flags & (isNew ? 0x04U : 0x40U)) != 0;
        if (isEncrypted)
            return std::nullopt;
        if (content.length > longestText)
            return textTooLong();
        std::string bytes = source_.read(content.offset, static_cast<std::size_t>(content.length));
        if (isNew && (isUnsynchronised_ || (flags & 0x02U) != 0))
            bytes = synchronised(bytes);
        if (isCompressed || (isNew && (flags & 0x01U) != 0))
            bytes.erase(0, 4); // length of the decompressed text
        if (isCompressed) {
            auto text = inflated(bytes);
            if (!text)
                return std::nullopt;
            bytes = std::move(*text);
        }
        return bytes.size() > longestText ? Value(textTooLong()) : decodeId3Text(bytes);
    }

    static void add(FileTags& tags, const WantedFrame& frame, Value value) {
        tags.id3.push_back({"id3/" + std::string(frame.name), frame.commonKey, std::move(value)});
        if (!tags.id3.back().commonKey.empty())
            tags.common.push_back(tags.id3.back());
    }

    const ByteSource& source_;
    unsigned version_;
    bool isUnsynchronised_; ///< used for version 4 only: all frames are unsynchronised
};

/// Returns the length of the extended header at `place`.
std::uint64_t extendedLength(const ByteSource& source, std::uint64_t place, unsigned version) {
    const std::string bytes = source.read(place, 4);
    return version == 3 ? std::uint64_t{4} + bigEndian32(bytes) : synchSafe(bytes);
}

} // namespace

bool isId3Header(std::string_view bytes) {
    const unsigned version = byteAt(bytes, 3);
    if (bytes.size() < tagHeaderLength || !bytes.starts_with("ID3") || version < 2 || version > 4)
        return false;
    return isSynchSafe(bytes.substr(6, 4));
}

void readId3Tag(FileTags& tags, const ByteSource& file, std::uint64_t place) {
    const std::string head = file.read(place, tagHeaderLength);
    if (!isId3Header(head))
        return;
    tags.formats.emplace_back(id3Format);
    const unsigned version = byteAt(head, 3);
    const unsigned flags = byteAt(head, 5);
    const bool isUnsynchronised = (flags & unsynchronised) != 0;
    const std::uint64_t begin = place + tagHeaderLength;
    const std::uint64_t end = std::min(begin + synchSafe(std::string_view(head).substr(6)), file.size());
    const auto readFrames = [&](const ByteSource& source, std::uint64_t from, std::uint64_t to) {
        if (version != 2 && (flags & extendedHeader) != 0)
            from += extendedLength(source, from, version);
        FrameReader(source, version, isUnsynchronised).read(tags, from, to);
    };
    if (!isUnsynchronised || version == 4)
        return readFrames(file, begin, end);
    // Before version 4, frame headers are unsynchronised too, so the zero bytes are removed from the whole
    // tag.
    const MemorySource whole(
        synchronised(file.read(begin, static_cast<std::size_t>(std::min(end - begin, longestWholeTag)))));
    readFrames(whole, 0, whole.size());
}

} // namespace orvalen
