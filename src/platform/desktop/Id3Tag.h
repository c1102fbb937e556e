#pragma once

#include "platform/desktop/ByteSource.h"

#include <optional>
#include <string>
#include <string_view>

namespace orvalen {

/// The length of the ID3v2 tag that the bytes begin, its header and footer counted; nothing when they begin
/// none. Ten bytes are enough.
std::optional<std::uint64_t> id3TagLength(std::string_view head);

/// The tag as a small one that holds its frames of title, artist and tempo as they are. The rest, pictures
/// above all, is not even read. Empty when no tag stands there.
std::string smallId3Tag(const ByteSource& file, const ByteRange& range);

} // namespace orvalen
