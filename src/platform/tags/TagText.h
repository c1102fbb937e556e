#pragma once

#include "core/Error.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace orvalen {

/// The longest text of a tag in bytes, before and after decompression. A longer text is an error in ID3 and
/// MPEG-4 tags, and is cut in WAV and AIFF files. A longer APE tag is ignored.
inline constexpr std::size_t longestText = 1 << 20;

/// Returns the error for a longer text.
tl::unexpected<Error> textTooLong();

/// Converts the bytes before the first zero to UTF-8.
std::string fromLatin1(std::string_view bytes);
/// Returns the bytes before the first zero if they are valid UTF-8; else converts them from Latin-1.
std::string fromUtf8OrLatin1(std::string_view bytes);

/// Decodes the first value of an ID3 text frame: a byte for the encoding, then the text. If the encoding is
/// unknown or a byte-order mark is missing, tries UTF-16, UTF-8 and Latin-1. Returns nullopt if none fits.
std::optional<std::string> decodeId3Text(std::string_view frame);

} // namespace orvalen
