#include "platform/tags/TagLibText.h"

#include "core/Text.h"

#include <cstdint>

namespace orvalen {

namespace {

bool isHighSurrogate(std::uint32_t unit) {
    return unit >= 0xD800 && unit < 0xDC00;
}

bool isLowSurrogate(std::uint32_t unit) {
    return unit >= 0xDC00 && unit < 0xE000;
}

void append(std::string& text, std::uint32_t character) {
    const auto add = [&](std::uint32_t byte) { text += static_cast<char>(byte); };
    if (character < 0x80) {
        add(character);
    } else if (character < 0x800) {
        add(0xC0 | character >> 6);
        add(0x80 | (character & 0x3F));
    } else if (character < 0x10000) {
        add(0xE0 | character >> 12);
        add(0x80 | (character >> 6 & 0x3F));
        add(0x80 | (character & 0x3F));
    } else {
        add(0xF0 | character >> 18);
        add(0x80 | (character >> 12 & 0x3F));
        add(0x80 | (character >> 6 & 0x3F));
        add(0x80 | (character & 0x3F));
    }
}

} // namespace

std::string toUtf8(const TagLib::String& text) {
    // TagLib keeps UTF-16 units in wide characters; its own conversion loses the text to one lone surrogate.
    std::string result;
    const TagLib::wstring wide = text.toWString();
    const std::u32string units(wide.begin(), wide.end());
    for (std::size_t i = 0; i < units.size(); ++i) {
        std::uint32_t character = units[i];
        const std::uint32_t next = i + 1 < units.size() ? units[i + 1] : 0;
        if (isHighSurrogate(character) && isLowSurrogate(next)) {
            character = 0x10000 + ((character - 0xD800) << 10) + (next - 0xDC00);
            ++i;
        } else if (isHighSurrogate(character) || isLowSurrogate(character) || character > 0x10FFFF) {
            character = 0xFFFD;
        }
        append(result, character);
    }
    return result;
}

TagLib::String fromUtf8OrLatin1(const TagLib::ByteVector& bytes) {
    std::string_view text(bytes.data(), bytes.size());
    text = text.substr(0, text.find('\0'));
    return {std::string(text), isValidUtf8(text) ? TagLib::String::UTF8 : TagLib::String::Latin1};
}

} // namespace orvalen
