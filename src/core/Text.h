#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>

namespace orvalen {

// Functions for UTF-8 texts. Thread-safe.

/// Returns whether both texts are equal under canonical equivalence: ‘é’ can be one code point or two.
bool canonicallyEqual(std::string_view left, std::string_view right);
/// Returns a hash that is equal for canonically equal texts.
std::size_t canonicalHash(std::string_view text);
/// Returns whether the text starts with the prefix under canonical equivalence. Never splits a letter from
/// its accent.
bool hasCanonicalPrefix(std::string_view text, std::string_view prefix);
/// Returns the composed form (NFC).
std::string composed(std::string_view text);

bool isAscii(std::string_view text);
/// Returns the text with A to Z in lower case. Other letters stay.
std::string toAsciiLower(std::string_view text);
bool isValidUtf8(std::string_view text);
/// Returns the text with each invalid byte sequence replaced by U+FFFD. For texts from foreign files.
std::string toValidUtf8(std::string_view text);

/// Removes space separators, tabs and line breaks at both ends.
std::string_view trimmed(std::string_view text);
/// Removes space separators and tabs at both ends.
std::string_view trimmedOfBlanks(std::string_view text);
/// Returns whether the text has only space separators, tabs and line breaks.
bool isBlank(std::string_view text);

/// Returns the text after the last slash.
std::string_view lastPathComponent(std::string_view path);
/// Returns the last component without its extension: ‘My.Song’ for ‘My.Song.mp3’; the whole component if it
/// has no dot.
std::string_view bareName(std::string_view path);
/// Returns the text after the last dot of the last component; empty if it has no dot.
std::string_view pathExtension(std::string_view path);

struct TextHash {
    using is_transparent = void;
    std::size_t operator()(std::string_view text) const { return canonicalHash(text); }
};

struct TextEqual {
    using is_transparent = void;
    bool operator()(std::string_view left, std::string_view right) const {
        return canonicallyEqual(left, right);
    }
};

/// A map whose keys are compared by canonical equivalence.
template <typename Value>
using TextMap = std::unordered_map<std::string, Value, TextHash, TextEqual>;

} // namespace orvalen
