#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace orvalen {

// Base64 with the standard alphabet, padding and no line breaks. Thread-safe.

std::string base64(std::string_view bytes);

/// Decodes a text that base64() could have written. Returns nullopt for any other text: white space, a
/// missing or misplaced "=", another alphabet, or unused bits that are not zero.
std::optional<std::string> fromBase64(std::string_view text);

} // namespace orvalen
