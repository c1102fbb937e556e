#include "platform/tags/TagText.h"

#include "core/Text.h"

#include <algorithm>
#include <unicode/unistr.h>

namespace orvalen {

namespace {

std::string_view upToZero(std::string_view bytes) {
    return bytes.substr(0, bytes.find('\0'));
}

std::uint8_t byteAt(std::string_view bytes, std::size_t place) {
    return static_cast<std::uint8_t>(bytes[place]);
}

std::string toUtf8(const std::u16string& text) {
    std::string result; // ICU replaces half a surrogate pair by U+FFFD
    return icu::UnicodeString(false, text.data(), static_cast<std::int32_t>(text.size()))
        .toUTF8String(result);
}

/// Converts the units before the first zero unit. Ignores an odd last byte.
std::string fromUtf16(std::string_view bytes, bool bigEndian) {
    std::u16string units;
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
        const auto unit = static_cast<char16_t>(byteAt(bytes, i + (bigEndian ? 0 : 1)) << 8 |
                                                byteAt(bytes, i + (bigEndian ? 1 : 0)));
        if (unit == 0)
            break;
        units += unit;
    }
    return toUtf8(units);
}

bool isControl(char character) {
    return static_cast<unsigned char>(character) < ' ' && character != '\t' && character != '\n' &&
           character != '\r';
}

std::optional<std::string> guessed(std::string_view bytes) {
    // Most texts start with a Latin letter, which has one zero byte in UTF-16.
    if (bytes.size() >= 2 && (bytes[0] == '\0') != (bytes[1] == '\0'))
        return fromUtf16(bytes, bytes[0] == '\0');
    std::string text = fromUtf8OrLatin1(bytes);
    if (std::any_of(text.begin(), text.end(), isControl))
        return std::nullopt;
    return text;
}

} // namespace

tl::unexpected<Error> textTooLong() {
    return failure("A text of the tags is longer than 1 MB");
}

std::string fromLatin1(std::string_view bytes) {
    const std::string_view text = upToZero(bytes);
    if (isAscii(text))
        return std::string(text);
    std::u16string units;
    for (const char byte : text)
        units += static_cast<unsigned char>(byte);
    return toUtf8(units);
}

std::string fromUtf8OrLatin1(std::string_view bytes) {
    const std::string_view text = upToZero(bytes);
    return isValidUtf8(text) ? std::string(text) : fromLatin1(text);
}

std::optional<std::string> decodeId3Text(std::string_view frame) {
    if (frame.size() < 2)
        return std::string();
    const std::string_view text = frame.substr(1);
    switch (frame[0]) {
    case 0:
        return fromLatin1(text);
    case 1:
        if (text.starts_with("\xFF\xFE") || text.starts_with("\xFE\xFF"))
            return fromUtf16(text.substr(2), text[0] == '\xFE');
        return guessed(text);
    case 2:
        return fromUtf16(text, true);
    case 3:
        return fromUtf8OrLatin1(text);
    default:
        return guessed(text);
    }
}

} // namespace orvalen
