#include "core/Text.h"
#include "platform/tags/Id3Tag.h"
#include "platform/tags/TagText.h"

#include <algorithm>

namespace orvalen {

namespace {

constexpr int mostChunks = 10'000; ///< a file with more is damaged

bool isChunkName(std::string_view bytes) {
    return bytes.size() == 4 &&
           std::all_of(bytes.begin(), bytes.end(), [](char letter) { return letter >= ' ' && letter < 127; });
}

/// Returns whether there is a byte of padding at `place`. Some programs omit it, others do not set it to
/// zero.
bool isPadded(const ByteSource& file, std::uint64_t place) {
    const std::string bytes = file.read(place, 5);
    return !bytes.empty() && (bytes[0] == '\0' || isChunkName(std::string_view(bytes).substr(1)));
}

using LengthReader = std::uint32_t (*)(std::string_view);

/// Calls the function with the name and the content of each chunk in the range.
template <typename Function>
void forEachChunk(const ByteSource& file, const ByteRange& range, LengthReader lengthOf, Function function) {
    std::uint64_t place = range.offset;
    for (int count = 0; count < mostChunks && place + 8 <= range.end(); ++count) {
        const std::string head = file.read(place, 8);
        if (head.size() < 8 || !isChunkName(std::string_view(head).substr(0, 4)))
            return;
        const ByteRange content{place + 8, lengthOf(std::string_view(head).substr(4))};
        function(head.substr(0, 4), content);
        place = content.end();
        if (content.length % 2 == 1 && isPadded(file, place))
            ++place;
    }
}

ByteRange chunksOf(const ByteSource& file) {
    constexpr std::uint64_t headLength = 12; // name of the container, its length, kind of file
    return {headLength, file.size() - std::min(file.size(), headLength)};
}

/// Reads the tag in the chunk, unless an earlier chunk had one.
void readFirstId3(FileTags& tags, const ByteSource& file, std::string_view name, const ByteRange& content) {
    if ((name == "ID3 " || name == "id3 ") && tags.formats.empty())
        readId3Tag(tags, file, content.offset);
}

std::string textIn(const ByteSource& file, const ByteRange& range) {
    return fromUtf8OrLatin1(
        file.read(range.offset, std::min(static_cast<std::size_t>(range.length), longestText)));
}

/// Reads the texts of an INFO list. If a name occurs again, the later text replaces the earlier one.
void readInfo(FileTags& tags, const ByteSource& file, const ByteRange& list) {
    std::string title;
    std::string artist;
    tags.formats.emplace_back("info");
    forEachChunk(file, list, littleEndian32, [&](std::string_view name, const ByteRange& content) {
        if (content.end() > list.end())
            return;
        if (name == "INAM")
            title = textIn(file, content);
        else if (name == "IART")
            artist = textIn(file, content);
    });
    tags.addUnlessEmpty("title", std::move(title));
    tags.addUnlessEmpty("artist", std::move(artist));
}

} // namespace

Expected<FileTags> readWavTags(const ByteSource& file) {
    FileTags tags;
    std::optional<ByteRange> info;
    forEachChunk(file, chunksOf(file), littleEndian32, [&](std::string_view name, const ByteRange& content) {
        readFirstId3(tags, file, name, content);
        if (!info && name == "LIST" && content.length >= 4 && file.read(content.offset, 4) == "INFO")
            info = {content.offset + 4, content.length - 4};
    });
    if (info && !tags.hasTitleAndArtist())
        readInfo(tags, file, *info);
    return tags;
}

Expected<FileTags> readAiffTags(const ByteSource& file) {
    FileTags tags;
    std::optional<ByteRange> title;
    std::optional<ByteRange> artist;
    forEachChunk(file, chunksOf(file), bigEndian32, [&](std::string_view name, const ByteRange& content) {
        readFirstId3(tags, file, name, content);
        if (name == "NAME" && !title)
            title = content;
        else if (name == "AUTH" && !artist)
            artist = content;
    });
    if (title)
        tags.addUnlessEmpty("title", std::string(trimmed(textIn(file, *title))));
    if (artist)
        tags.addUnlessEmpty("artist", std::string(trimmed(textIn(file, *artist))));
    return tags;
}

} // namespace orvalen
