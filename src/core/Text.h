#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>

namespace orvalen {

// Texts are UTF-8. All of these are pure and may be called on any thread.

/// Equality under canonical equivalence: composed and decomposed forms of one text are equal.
bool canonicallyEqual(std::string_view left, std::string_view right);
/// The hash of the canonical form; agrees with canonicallyEqual.
std::size_t canonicalHash(std::string_view text);
/// Whether the text begins with the prefix under canonical equivalence. An accent is never cut off its
/// letter.
bool hasCanonicalPrefix(std::string_view text, std::string_view prefix);
/// The composed canonical form (NFC).
std::string composed(std::string_view text);

bool isAscii(std::string_view text);
/// The text with A to Z in lower case; other letters stay.
std::string toAsciiLower(std::string_view text);
bool isValidUtf8(std::string_view text);
/// The text with every invalid sequence replaced by U+FFFD; for texts that come out of foreign files.
std::string toValidUtf8(std::string_view text);

/// Without space separators, tabs and line breaks at both ends.
std::string_view trimmed(std::string_view text);
/// Without space separators and tabs at both ends; line breaks stay.
std::string_view trimmedOfBlanks(std::string_view text);
/// Nothing but white space and line breaks.
bool isBlank(std::string_view text);

/// The last component of a path: what stands after the last slash.
std::string_view lastPathComponent(std::string_view path);
/// The last component without its extension: ‘My.Song.mp3’ gives ‘My.Song’; no dot, the whole component.
std::string_view bareName(std::string_view path);
/// The text after the last dot of the last component; empty when there is no dot.
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
