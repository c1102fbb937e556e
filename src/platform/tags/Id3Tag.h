#pragma once

#include "platform/tags/ByteSource.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace orvalen {

/// Whether an ID3v2 tag of a version that we know begins with the bytes; ten are enough to tell.
bool isId3Header(std::string_view bytes);

/// The tag at the place as a small one that holds its frames of title, artist and tempo as they are. The
/// rest, pictures above all, is not even read. Empty when no tag stands there.
std::string smallId3Tag(const ByteSource& file, std::uint64_t place);

} // namespace orvalen
