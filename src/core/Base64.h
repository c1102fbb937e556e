#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace orvalen {

// Standard alphabet, padded, no line breaks. Any thread.

std::string base64(std::string_view bytes);

/// The bytes of a text that base64() could have written; nothing for any other text: white space, a missing
/// or a misplaced "=", another alphabet, left-over bits that are not zero.
std::optional<std::string> fromBase64(std::string_view text);

} // namespace orvalen
