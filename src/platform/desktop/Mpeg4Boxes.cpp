#include "platform/desktop/Mpeg4Boxes.h"

namespace orvalen {

namespace {

constexpr int mostBoxes = 10'000; ///< side by side; a file of more is damaged

} // namespace

std::optional<Mpeg4Box> boxAt(const ByteSource& file, std::uint64_t place, std::uint64_t end) {
    const std::string head = file.read(place, 16);
    if (head.size() < 8 || place + 8 > end)
        return {};
    std::uint64_t length = bigEndian32(head);
    std::uint64_t headLength = 8;
    if (length == 1) {
        length = bigEndian64(std::string_view(head).substr(8));
        headLength = 16;
    } else if (length == 0) {
        length = end - place;
    }
    if (length < headLength || length > end - place)
        return {};
    return Mpeg4Box{head.substr(4, 4), {place + headLength, length - headLength}};
}

std::vector<Mpeg4Box> boxesIn(const ByteSource& file, const ByteRange& range, std::string_view until) {
    std::vector<Mpeg4Box> boxes;
    std::uint64_t place = range.offset;
    for (int count = 0; count < mostBoxes; ++count) {
        auto box = boxAt(file, place, range.end());
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
