#include "platform/tags/FileTags.h"
#include "platform/tags/TagText.h"

#include <algorithm>

namespace orvalen {

namespace {

constexpr int mostBoxes = 10'000; ///< boxes in one parent; a file with more is damaged

/// One of the nested boxes of an MPEG-4 file.
struct Box {
    std::string name; ///< four characters
    ByteRange content;
    bool isCutOff = false; ///< the box is longer than the rest of the file
};

/// Reads the header of the box at `place`. The box may be longer than its parent, because parents with too
/// small a length are common and harmless. A box beyond the end of the file is cut.
std::optional<Box> boxAt(const ByteSource& file, std::uint64_t place) {
    const std::uint64_t end = file.size();
    const std::string head = file.read(place, 16);
    if (head.size() < 8)
        return {};
    std::uint64_t length = bigEndian32(head);
    std::uint64_t headLength = 8;
    if (length == 1) {
        length = bigEndian64(std::string_view(head).substr(8));
        headLength = 16;
    } else if (length == 0) {
        length = end - place;
    }
    if (length < headLength || end - place < headLength)
        return {};
    const std::uint64_t contentLength = std::min(length, end - place) - headLength;
    return Box{head.substr(4, 4), {place + headLength, contentLength}, length > end - place};
}

/// Returns the first box that starts in the range and has the name. Does not search inside other boxes.
std::optional<Box> find(const ByteSource& file, const ByteRange& range, std::string_view name) {
    std::uint64_t place = range.offset;
    for (int count = 0; count < mostBoxes && place < range.end(); ++count) {
        auto box = boxAt(file, place);
        if (!box || box->name == name)
            return box;
        place = box->content.end();
    }
    return {};
}

/// Returns the content of a metadata box without the version and flags that most programs write first.
ByteRange withoutVersion(const ByteSource& file, ByteRange meta) {
    if (file.read(meta.offset + 4, 4) != "hdlr" && meta.length >= 4) {
        meta.offset += 4;
        meta.length -= 4;
    }
    return meta;
}

std::optional<Box> findItemList(const ByteSource& file, const ByteRange& movie) {
    if (const auto userData = find(file, movie, "udta"))
        if (const auto meta = find(file, userData->content, "meta"))
            return find(file, withoutVersion(file, meta->content), "ilst");
    return {};
}

/// Adds the text of an item: a box "data" with a type, a locale and the text.
void readItem(FileTags& tags, const ByteSource& file, const ByteRange& list, const std::string& name,
              const char* commonKey) {
    constexpr std::uint64_t headLength = 8;
    constexpr std::uint32_t utf8 = 1;
    const auto item = find(file, list, name);
    const auto data = item ? boxAt(file, item->content.offset) : std::nullopt;
    if (!data || data->name != "data" || bigEndian32(file.read(data->content.offset, 4)) != utf8)
        return;
    const std::uint64_t end = std::min(data->content.end(), item->content.end());
    const std::uint64_t begin = std::min(data->content.offset + headLength, end);
    const auto read = [&]() -> Expected<std::optional<std::string>> {
        if (end - begin > longestText)
            return textTooLong();
        return fromUtf8OrLatin1(file.read(begin, static_cast<std::size_t>(end - begin)));
    };
    tags.common.push_back({"itsk/" + name, commonKey, read()});
}

} // namespace

Expected<FileTags> readMpeg4Tags(const ByteSource& file) {
    const auto movie = find(file, {0, file.size()}, "moov");
    if (!movie || movie->isCutOff)
        return failure("The file is incomplete: its description (moov) is missing");
    FileTags tags;
    if (const auto list = findItemList(file, movie->content)) {
        tags.formats.emplace_back("mp4");
        readItem(tags, file, list->content, "\251nam", "title");
        readItem(tags, file, list->content, "\251ART", "artist");
    }
    return tags;
}

} // namespace orvalen
