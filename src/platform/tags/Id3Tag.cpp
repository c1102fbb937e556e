#include "platform/tags/Id3Tag.h"

#include <algorithm>

namespace orvalen {

namespace {

constexpr std::size_t tagHeaderLength = 10;
constexpr std::uint64_t mostBytes = 16 << 20; ///< of a tag that has to be read whole, and of text frames

constexpr unsigned char unsynchronised = 0x80;
constexpr unsigned char extendedHeader = 0x40;

unsigned char byteAt(std::string_view bytes, std::size_t place) {
    return place < bytes.size() ? static_cast<unsigned char>(bytes[place]) : 0;
}

/// Four bytes of seven bits each.
std::uint32_t synchSafe(std::string_view bytes) {
    std::uint32_t result = 0;
    for (std::size_t i = 0; i < 4; ++i)
        result = result << 7 | (byteAt(bytes, i) & 0x7FU);
    return result;
}

bool isSynchSafe(std::string_view bytes) {
    return std::all_of(bytes.begin(), bytes.end(), [](char byte) { return (byte & 0x80) == 0; });
}

std::string toSynchSafe(std::uint64_t number) {
    std::string result;
    for (int shift = 21; shift >= 0; shift -= 7)
        result += static_cast<char>(number >> shift & 0x7F);
    return result;
}

/// Takes out the zero bytes that were put behind every 0xFF.
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

/// Walks the frames of a tag of one version and writes the small one.
class FrameWalk {
public:
    FrameWalk(const ByteSource& source, unsigned version) : source_(source), version_(version) {}

    /// The wanted frames that stand from the place up to the end.
    std::string wanted(std::uint64_t place, std::uint64_t end) {
        std::string frames;
        while (place + headerLength() < end && frames.size() < mostBytes) {
            const std::string header = source_.read(place, headerLength());
            if (!isFrameName(header))
                break;
            const std::uint64_t length = contentLength(header, place);
            // Like a tag library that reads the whole: an empty frame or one that leaves the tag is the end.
            if (length == 0 || length > end - place || header.size() < headerLength())
                break;
            place += headerLength();
            if (isWanted(header)) {
                const std::string content =
                    source_.read(place, static_cast<std::size_t>(std::min({length, end - place, mostBytes})));
                frames += rewritten(header, content.size()) + content;
            }
            place += length;
        }
        return frames;
    }

private:
    std::size_t headerLength() const { return version_ == 2 ? 6 : 10; }
    std::size_t nameLength() const { return version_ == 2 ? 3 : 4; }

    bool isFrameName(std::string_view bytes) const {
        if (bytes.size() < nameLength())
            return false;
        const bool old = isOldName(bytes);
        const std::string_view name = bytes.substr(0, old ? 3 : nameLength());
        return std::all_of(name.begin(), name.end(), [](char letter) {
            return (letter >= 'A' && letter <= 'Z') || (letter >= '0' && letter <= '9');
        });
    }

    /// Some taggers write the names of version 2 into tags of version 3.
    bool isOldName(std::string_view bytes) const {
        return version_ == 2 || (version_ == 3 && byteAt(bytes, 3) == 0);
    }

    bool isWanted(std::string_view header) const {
        const bool old = isOldName(header);
        const std::string_view name = header.substr(0, old ? 3 : 4);
        return old ? name == "TT2" || name == "TP1" || name == "TBP"
                   : name == "TIT2" || name == "TPE1" || name == "TBPM";
    }

    std::uint64_t contentLength(std::string_view header, std::uint64_t place) const {
        if (version_ == 2)
            return bigEndian32(header.substr(2)) & 0xFFFFFF;
        const std::uint32_t plain = bigEndian32(header.substr(4));
        if (version_ == 3)
            return plain;
        // Some taggers write the lengths of version 4 as those of version 3; the frame behind tells.
        const std::uint32_t safe = synchSafe(header.substr(4));
        if (!isSynchSafe(header.substr(4, 4)))
            return plain;
        if (safe > 127 && !nameStandsAt(place + 10 + safe) && nameStandsAt(place + 10 + plain))
            return plain;
        return safe;
    }

    bool nameStandsAt(std::uint64_t place) const { return isFrameName(source_.read(place, nameLength())); }

    /// Older taggers of version 4 wrote the length in another way.
    std::string rewritten(std::string_view header, std::uint64_t length) const {
        if (version_ != 4)
            return std::string(header);
        return std::string(header.substr(0, 4)) + toSynchSafe(length) + std::string(header.substr(8, 2));
    }

    const ByteSource& source_;
    unsigned version_;
};

/// How many bytes the extended header at the place takes.
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

std::string smallId3Tag(const ByteSource& file, std::uint64_t place) {
    const std::string head = file.read(place, tagHeaderLength);
    if (!isId3Header(head))
        return {};
    const unsigned version = byteAt(head, 3);
    const unsigned char flags = byteAt(head, 5);
    const std::uint64_t begin = place + tagHeaderLength;
    const std::uint64_t end = std::min(begin + synchSafe(std::string_view(head).substr(6)), file.size());
    const auto wanted = [&](const ByteSource& source, std::uint64_t from, std::uint64_t to) {
        if (version != 2 && (flags & extendedHeader) != 0)
            from += extendedLength(source, from, version);
        return FrameWalk(source, version).wanted(from, to);
    };

    std::string frames;
    unsigned char keptFlags = 0;
    if ((flags & unsynchronised) != 0 && version < 4) {
        const MemorySource whole(
            synchronised(file.read(begin, static_cast<std::size_t>(std::min(end - begin, mostBytes)))));
        frames = wanted(whole, 0, whole.size());
    } else {
        // In version 4 each frame is unsynchronised by itself.
        keptFlags = flags & unsynchronised;
        frames = wanted(file, begin, end);
    }
    return head.substr(0, 5) + static_cast<char>(keptFlags) + toSynchSafe(frames.size()) + frames;
}

} // namespace orvalen
