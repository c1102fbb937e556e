#pragma once

#include "platform/tags/FileTags.h"

#include <cstdint>
#include <string_view>

namespace orvalen {

/// Whether a known version of an ID3v2 tag begins with the bytes. Needs the first ten bytes.
bool isId3Header(std::string_view bytes);

/// Adds the first title, artist and tempo frame of the tag at the place. Other frames, pictures above all,
/// are passed over unread. A frame longer than `longestText` after decompression becomes an item with an
/// error; an encrypted or damaged one becomes an item without a value. Adds nothing where no tag begins.
void readId3Tag(FileTags& tags, const ByteSource& file, std::uint64_t place);

} // namespace orvalen
