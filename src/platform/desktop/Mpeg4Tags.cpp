#include "platform/desktop/Mpeg4Boxes.h"
#include "platform/desktop/TagPlaces.h"

namespace orvalen {

namespace {

std::optional<ByteRange> contentOf(const ByteSource& file, const ByteRange& range, std::string_view name) {
    const auto boxes = boxesIn(file, range, name);
    if (boxes.empty() || boxes.back().name != name)
        return {};
    return boxes.back().content;
}

/// The content of a metadata box without the version and flags that most writers put before its boxes.
ByteRange withoutVersion(const ByteSource& file, ByteRange meta) {
    if (file.read(meta.offset + 4, 4) != "hdlr" && meta.length >= 4) {
        meta.offset += 4;
        meta.length -= 4;
    }
    return meta;
}

} // namespace

Expected<TagPlaces> findMpeg4Tags(const ByteSource& file) {
    TagPlaces places;
    places.mpeg4 = true;
    const auto movie = contentOf(file, {0, file.size()}, "moov");
    if (!movie)
        return failure("The file ends before its description");
    if (const auto userData = contentOf(file, *movie, "udta"))
        if (const auto meta = contentOf(file, *userData, "meta"))
            places.itemList = contentOf(file, withoutVersion(file, *meta), "ilst");
    return places;
}

} // namespace orvalen
