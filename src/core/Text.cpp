#include "core/Text.h"

#include <algorithm>
#include <cstring>
#include <functional>
#include <unicode/bytestream.h>
#include <unicode/normalizer2.h>
#include <unicode/stringpiece.h>
#include <unicode/uchar.h>
#include <unicode/utf8.h>

namespace orvalen {
namespace {

icu::StringPiece piece(std::string_view text) {
    return {text.data(), static_cast<std::int32_t>(text.size())};
}

const icu::Normalizer2& composer() {
    static const icu::Normalizer2* instance = [] {
        UErrorCode status = U_ZERO_ERROR;
        return icu::Normalizer2::getNFCInstance(status);
    }();
    return *instance;
}

bool isBlankCharacter(UChar32 c) {
    return c == '\t' || u_charType(c) == U_SPACE_SEPARATOR;
}

bool isLineBreak(UChar32 c) {
    return (c >= 0x0A && c <= 0x0D) || c == 0x85 || c == 0x2028 || c == 0x2029;
}

/// Returns the character at `place` and moves `place` behind it. Negative for invalid UTF-8.
UChar32 nextCharacter(std::string_view text, std::size_t& place) {
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(text.data());
    UChar32 c = 0;
    U8_NEXT(bytes, place, text.size(), c);
    return c;
}

/// Returns the offset of the last character.
std::size_t lastCharacter(std::string_view text) {
    std::size_t place = text.size() - 1;
    while (place > 0 && text.size() - place < 4 && U8_IS_TRAIL(text[place]))
        --place;
    return place;
}

template <typename Predicate>
std::string_view trimmedBy(std::string_view text, Predicate drops) {
    while (!text.empty()) {
        std::size_t next = 0;
        if (!drops(nextCharacter(text, next)))
            break;
        text.remove_prefix(next);
    }
    while (!text.empty()) {
        const std::size_t last = lastCharacter(text);
        std::size_t end = last;
        if (!drops(nextCharacter(text, end)) || end != text.size())
            break;
        text = text.substr(0, last);
    }
    return text;
}

} // namespace

bool isAscii(std::string_view text) {
    std::size_t i = 0;
    for (; i + sizeof(std::uint64_t) <= text.size(); i += sizeof(std::uint64_t)) {
        std::uint64_t word = 0;
        std::memcpy(&word, text.data() + i, sizeof word);
        if (word & 0x8080808080808080ULL)
            return false;
    }
    return std::all_of(text.begin() + static_cast<std::ptrdiff_t>(i), text.end(),
                       [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

std::string toAsciiLower(std::string_view text) {
    std::string result(text);
    for (char& c : result)
        if (c >= 'A' && c <= 'Z')
            c = static_cast<char>(c - 'A' + 'a');
    return result;
}

std::string composed(std::string_view text) {
    if (isAscii(text))
        return std::string(text);
    std::string result;
    icu::StringByteSink<std::string> sink(&result, static_cast<std::int32_t>(text.size()));
    UErrorCode status = U_ZERO_ERROR;
    composer().normalizeUTF8(0, piece(text), sink, nullptr, status);
    return U_SUCCESS(status) ? result : std::string(text);
}

bool canonicallyEqual(std::string_view left, std::string_view right) {
    if (left == right)
        return true;
    if (isAscii(left) || isAscii(right)) // an ASCII text has no other canonical form
        return isAscii(left) ? !isAscii(right) && composed(right) == left : composed(left) == right;
    return composed(left) == composed(right);
}

std::size_t canonicalHash(std::string_view text) {
    if (isAscii(text))
        return std::hash<std::string_view>{}(text);
    return std::hash<std::string>{}(composed(text));
}

bool hasCanonicalPrefix(std::string_view text, std::string_view prefix) {
    if (isAscii(text))
        return text.starts_with(prefix) || (!isAscii(prefix) && text.starts_with(composed(prefix)));
    return composed(text).starts_with(composed(prefix));
}

bool isValidUtf8(std::string_view text) {
    if (isAscii(text))
        return true;
    for (std::size_t i = 0; i < text.size();)
        if (nextCharacter(text, i) < 0)
            return false;
    return true;
}

std::string toValidUtf8(std::string_view text) {
    if (isValidUtf8(text))
        return std::string(text);
    std::string result;
    for (std::size_t i = 0; i < text.size();) {
        const std::size_t start = i;
        if (nextCharacter(text, i) < 0)
            result += "\xEF\xBF\xBD";
        else
            result.append(text, start, i - start);
    }
    return result;
}

std::string_view trimmed(std::string_view text) {
    return trimmedBy(text, [](UChar32 c) { return isBlankCharacter(c) || isLineBreak(c); });
}

std::string_view trimmedOfBlanks(std::string_view text) {
    return trimmedBy(text, isBlankCharacter);
}

bool isBlank(std::string_view text) {
    return trimmed(text).empty();
}

std::string_view lastPathComponent(std::string_view path) {
    if (path.empty())
        return path;
    // memrchr() compares many bytes at once, unlike rfind().
    const auto* slash = static_cast<const char*>(::memrchr(path.data(), '/', path.size()));
    return slash == nullptr ? path : path.substr(static_cast<std::size_t>(slash - path.data()) + 1);
}

std::string_view bareName(std::string_view path) {
    const std::string_view name = lastPathComponent(path);
    return name.substr(0, name.rfind('.'));
}

std::string_view pathExtension(std::string_view path) {
    const std::string_view name = lastPathComponent(path);
    const std::size_t dot = name.rfind('.');
    return dot == std::string_view::npos ? std::string_view() : name.substr(dot + 1);
}

} // namespace orvalen
