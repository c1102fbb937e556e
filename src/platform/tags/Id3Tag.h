#pragma once

#include "platform/tags/FileTags.h"

#include <cstdint>
#include <string_view>

namespace orvalen {

/// Returns whether the bytes start an ID3v2 tag of a known version. Needs the first ten bytes.
bool isId3Header(std::string_view bytes);

/// Adds the first title, artist and tempo frame of the tag at `place`. Skips other frames without reading
/// them. A frame longer than `longestText` after decompression becomes an item with an error. An encrypted or
/// damaged frame becomes an item without a value. Adds nothing if there is no tag.
void readId3Tag(FileTags& tags, const ByteSource& file, std::uint64_t place);

} // namespace orvalen
