#include "platform/tags/FileTags.h"

#include <algorithm>

namespace orvalen {

namespace {

/// MPEG-4 files start with one of these boxes. The name follows the length of the box.
bool isMpeg4Head(std::string_view head) {
    const std::string_view name = head.size() >= 8 ? head.substr(4, 4) : std::string_view();
    return name == "ftyp" || name == "moov" || name == "mdat" || name == "wide" || name == "free" ||
           name == "skip" || name == "pnot";
}

} // namespace

bool FileTags::hasTitleAndArtist() const {
    const auto has = [&](std::string_view key) {
        return std::any_of(common.begin(), common.end(),
                           [&](const MetadataItem& item) { return item.commonKey == key; });
    };
    return has("title") && has("artist");
}

void FileTags::addUnlessEmpty(std::string commonKey, std::string text) {
    if (!text.empty())
        common.push_back({{}, std::move(commonKey), std::move(text)});
}

Expected<FileTags> readTags(const ByteSource& file) {
    const std::string head = file.read(0, 12);
    const std::string_view kind = std::string_view(head).substr(std::min<std::size_t>(8, head.size()));
    if (head.starts_with("RIFF") && kind == "WAVE")
        return readWavTags(file);
    if (head.starts_with("FORM") && (kind == "AIFF" || kind == "AIFC"))
        return readAiffTags(file);
    if (isMpeg4Head(head))
        return readMpeg4Tags(file);
    return readMpegTags(file);
}

} // namespace orvalen
