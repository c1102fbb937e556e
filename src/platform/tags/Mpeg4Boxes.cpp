#include "platform/tags/Mpeg4Boxes.h"

#include <algorithm>
#include <optional>

namespace orvalen {

namespace {

constexpr int mostBoxes = 10'000; ///< side by side; a file of more is damaged

/// The box that begins at the place. It may be longer than what holds it: only the file bounds it, because a
/// length of a parent that is too small is a common fault and does no harm.
std::optional<Mpeg4Box> boxAt(const ByteSource& file, std::uint64_t place) {
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
    return Mpeg4Box{head.substr(4, 4), {place + headLength, contentLength}, length > end - place};
}

} // namespace

std::vector<Mpeg4Box> boxesIn(const ByteSource& file, const ByteRange& range, std::string_view until) {
    std::vector<Mpeg4Box> boxes;
    std::uint64_t place = range.offset;
    for (int count = 0; count < mostBoxes && place < range.end(); ++count) {
        auto box = boxAt(file, place);
        if (!box)
            break;
        place = box->content.end();
        boxes.push_back(std::move(*box));
        if (boxes.back().name == until)
            break;
    }
    return boxes;
}

} // namespace orvalen
