#include "platform/tags/TagPlaces.h"

#include <algorithm>

namespace orvalen {

namespace {

constexpr std::size_t id3v1Length = 128;
constexpr std::size_t apeFooterLength = 32;

/// MPEG-4 files begin with one of these boxes, named behind its length.
bool isMpeg4Head(std::string_view head) {
    const std::string_view name = head.size() >= 8 ? head.substr(4, 4) : std::string_view();
    return name == "ftyp" || name == "moov" || name == "mdat" || name == "wide" || name == "free" ||
           name == "skip" || name == "pnot";
}

} // namespace

Expected<TagPlaces> findTags(const ByteSource& file) {
    const std::string head = file.read(0, 12);
    const std::string_view kind = std::string_view(head).substr(std::min<std::size_t>(8, head.size()));
    if (head.starts_with("RIFF") && kind == "WAVE")
        return findWavTags(file);
    if (head.starts_with("FORM") && (kind == "AIFF" || kind == "AIFC"))
        return findAiffTags(file);
    if (isMpeg4Head(head))
        return findMpeg4Tags(file);
    return findMpegTags(file);
}

EndTags findEndTags(const ByteSource& file) {
    EndTags tags;
    std::uint64_t end = file.size();
    if (end >= id3v1Length && file.read(end - id3v1Length, 3) == "TAG") {
        end -= id3v1Length;
        tags.id3v1 = ByteRange{end, id3v1Length};
    }
    if (end < apeFooterLength)
        return tags;
    const std::string footer = file.read(end - apeFooterLength, apeFooterLength);
    if (!footer.starts_with("APETAGEX"))
        return tags;
    const std::uint64_t length = littleEndian32(footer.substr(12)); // items and footer
    if (length >= apeFooterLength && length <= end)
        tags.ape = ByteRange{end - length, length};
    return tags;
}

} // namespace orvalen
