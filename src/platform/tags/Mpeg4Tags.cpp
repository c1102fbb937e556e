#include "platform/tags/Mpeg4Boxes.h"
#include "platform/tags/TagPlaces.h"

namespace orvalen {

namespace {

std::optional<Mpeg4Box> find(const ByteSource& file, const ByteRange& range, std::string_view name) {
    const auto boxes = boxesIn(file, range, name);
    if (boxes.empty() || boxes.back().name != name)
        return {};
    return boxes.back();
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
    const auto movie = find(file, {0, file.size()}, "moov");
    if (!movie || movie->cutOff)
        return failure("The file ends before its description");
    if (const auto userData = find(file, movie->content, "udta"))
        if (const auto meta = find(file, userData->content, "meta"))
            if (const auto list = find(file, withoutVersion(file, meta->content), "ilst"))
                places.itemList = list->content;
    return places;
}

} // namespace orvalen
