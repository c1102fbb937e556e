#include "platform/tags/TagPlaces.h"

#include <algorithm>

namespace orvalen {

namespace {

constexpr int mostChunks = 10'000; ///< a file of more is damaged

bool isChunkName(std::string_view bytes) {
    return bytes.size() == 4 &&
           std::all_of(bytes.begin(), bytes.end(), [](char letter) { return letter >= ' ' && letter < 127; });
}

/// Whether a byte of padding stands at the place. Some writers leave it out, some do not make it zero.
bool isPadded(const ByteSource& file, std::uint64_t place) {
    const std::string bytes = file.read(place, 5);
    return !bytes.empty() && (bytes[0] == '\0' || isChunkName(std::string_view(bytes).substr(1)));
}

/// Calls with the name and the content of every chunk of a RIFF or AIFF file.
template <typename Function>
void forEachChunk(const ByteSource& file, std::uint32_t (*lengthOf)(std::string_view), Function function) {
    std::uint64_t place = 12;
    for (int count = 0; count < mostChunks && place + 8 <= file.size(); ++count) {
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

template <typename Place>
void keepFirst(std::optional<Place>& first, const Place& place) {
    if (!first)
        first = place;
}

bool isId3(std::string_view chunk) {
    return chunk == "ID3 " || chunk == "id3 ";
}

} // namespace

TagPlaces findWavTags(const ByteSource& file) {
    TagPlaces places;
    forEachChunk(file, littleEndian32, [&](std::string_view name, const ByteRange& content) {
        if (isId3(name))
            keepFirst(places.id3, content.offset);
        else if (name == "LIST" && file.read(content.offset, 4) == "INFO")
            keepFirst(places.info, content);
    });
    return places;
}

TagPlaces findAiffTags(const ByteSource& file) {
    TagPlaces places;
    forEachChunk(file, bigEndian32, [&](std::string_view name, const ByteRange& content) {
        if (isId3(name))
            keepFirst(places.id3, content.offset);
        else if (name == "NAME")
            keepFirst(places.name, content);
        else if (name == "AUTH")
            keepFirst(places.author, content);
    });
    return places;
}

} // namespace orvalen
