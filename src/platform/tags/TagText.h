#pragma once

#include "core/Error.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace orvalen {

/// The longest text of a tag, in bytes of the file and after decompression. A longer one is an error or is
/// cut there: no title, artist or tempo is so long.
inline constexpr std::size_t longestText = 1 << 20;

/// The error of a longer text where it is not cut.
tl::unexpected<Error> textTooLong();

/// Converts the bytes up to the first zero to UTF-8.
std::string fromLatin1(std::string_view bytes);
/// Returns the bytes up to the first zero where they are valid UTF-8; else converts them from Latin-1.
std::string fromUtf8OrLatin1(std::string_view bytes);

/// Decodes the first value of an ID3 text frame: a byte that names the encoding, then the text. A text that
/// is invalid in that encoding is read as what it looks like: UTF-16 without a mark, UTF-8 or Latin-1.
/// Returns nullopt when it looks like none of them.
std::optional<std::string> decodeId3Text(std::string_view frame);

} // namespace orvalen
