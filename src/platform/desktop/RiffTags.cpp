#include "platform/desktop/TagPlaces.h"

namespace orvalen {

namespace {

constexpr int mostChunks = 10'000; ///< a file of more is damaged

/// Calls with the name and the content of every chunk of a RIFF or AIFF file.
template <typename Function>
void forEachChunk(const ByteSource& file, std::uint32_t (*lengthOf)(std::string_view), Function function) {
    std::uint64_t place = 12;
    for (int count = 0; count < mostChunks && place + 8 <= file.size(); ++count) {
        const std::string head = file.read(place, 8);
        if (head.size() < 8)
            return;
        const ByteRange content{place + 8, lengthOf(std::string_view(head).substr(4))};
        function(head.substr(0, 4), content);
        place = content.end();
        // Some writers leave the padding of an odd length out.
        if (content.length % 2 == 1 && file.read(place, 1) == std::string(1, '\0'))
            ++place;
    }
}

void keepFirst(std::optional<ByteRange>& place, const ByteRange& range) {
    if (!place)
        place = range;
}

bool isId3(std::string_view chunk) {
    return chunk == "ID3 " || chunk == "id3 ";
}

} // namespace

TagPlaces findWavTags(const ByteSource& file) {
    TagPlaces places;
    forEachChunk(file, littleEndian32, [&](std::string_view name, const ByteRange& content) {
        if (isId3(name))
            keepFirst(places.id3, content);
        else if (name == "LIST" && file.read(content.offset, 4) == "INFO")
            keepFirst(places.info, content);
    });
    return places;
}

TagPlaces findAiffTags(const ByteSource& file) {
    TagPlaces places;
    forEachChunk(file, bigEndian32, [&](std::string_view name, const ByteRange& content) {
        if (isId3(name))
            keepFirst(places.id3, content);
        else if (name == "NAME")
            keepFirst(places.name, content);
        else if (name == "AUTH")
            keepFirst(places.author, content);
    });
    return places;
}

} // namespace orvalen
