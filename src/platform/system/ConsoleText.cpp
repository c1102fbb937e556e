#include "platform/system/ConsoleText.h"

#include "core/Text.h"

#include <array>
#include <cstdio>

namespace orvalen {
namespace {

bool isControl(unsigned char byte) {
    return (byte < 0x20 && byte != '\t') || byte == 0x7F;
}

/// Returns whether a C1 control character (U+0080 to U+009F) starts at the index.
bool isSecondControl(std::string_view text, std::size_t index) {
    return text[index] == '\xC2' && index + 1 < text.size() &&
           static_cast<unsigned char>(text[index + 1]) < 0xA0;
}

std::string escaped(unsigned code) {
    std::array<char, 8> buffer{};
    std::snprintf(buffer.data(), buffer.size(), "\\u%04X", code);
    return buffer.data();
}

} // namespace

std::string consoleText(std::string_view message) {
    if (!isValidUtf8(message))
        return consoleText(toValidUtf8(message));
    std::string line;
    line.reserve(message.size());
    for (std::size_t i = 0; i < message.size(); ++i) {
        const auto byte = static_cast<unsigned char>(message[i]);
        if (byte == '\n' || byte == '\r')
            line += ' ';
        else if (isControl(byte))
            line += escaped(byte);
        else if (isSecondControl(message, i))
            line += escaped(static_cast<unsigned char>(message[++i]));
        else
            line += message[i];
    }
    return line;
}

} // namespace orvalen
