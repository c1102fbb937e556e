#pragma once

#include "platform/desktop/ByteSource.h"

#include <optional>
#include <string>
#include <string_view>

namespace orvalen {

/// The length of the ID3v2 tag that the bytes begin, its header and footer counted; nothing when they begin
/// none. Ten bytes are enough.
std::optional<std::uint64_t> id3TagLength(std::string_view head);

/// The tag as a small one of the same frames: text frames whole, of the others, pictures above all, the name
/// with one byte of content. Of a file's pictures nothing is read. Empty when no tag stands there.
std::string smallId3Tag(const ByteSource& file, const ByteRange& range);

} // namespace orvalen
