#include "core/JsonNumbers.h"

#include <charconv>
#include <cstdint>
#include <system_error>

namespace orvalen {
namespace {

/// Removes the digits at the start of `text`. Returns false if there are none.
bool takeDigits(std::string_view& text) {
    const std::size_t length = text.find_first_not_of("0123456789");
    const bool found = !text.empty() && length != 0;
    text.remove_prefix(length == std::string_view::npos ? text.size() : length);
    return found;
}

bool takeOneOf(std::string_view& text, std::string_view characters) {
    const bool found = !text.empty() && characters.find(text.front()) != std::string_view::npos;
    if (found)
        text.remove_prefix(1);
    return found;
}

bool isJsonNumber(std::string_view text) {
    takeOneOf(text, "-");
    if (!takeOneOf(text, "0") && !takeDigits(text))
        return false;
    if (takeOneOf(text, ".") && !takeDigits(text))
        return false;
    if (takeOneOf(text, "eE")) {
        takeOneOf(text, "+-");
        if (!takeDigits(text))
            return false;
    }
    return text.empty();
}

template <typename Number>
bool fits(std::string_view text) {
    Number number{};
    return std::from_chars(text.data(), text.data() + text.size(), number).ec == std::errc();
}

bool isOversized(std::string_view number) {
    if (number.find_first_of(".eE") != std::string_view::npos)
        return !fits<double>(number);
    return !fits<std::int64_t>(number) && !fits<std::uint64_t>(number);
}

/// Returns the length of the string literal at the start of `text`, or of all of `text` if the literal is not
/// closed.
std::size_t literalLength(std::string_view text) {
    for (std::size_t i = 1; i < text.size(); ++i) {
        if (text[i] == '"')
            return i + 1;
        if (text[i] == '\\')
            ++i;
    }
    return text.size();
}

} // namespace

std::string withoutOversizedNumbers(std::string_view json) {
    std::string result;
    result.reserve(json.size());
    while (!json.empty()) {
        std::size_t length = json.find_first_not_of("+-.0123456789eE");
        if (length == std::string_view::npos)
            length = json.size();
        const bool isNumber = length > 0 && isJsonNumber(json.substr(0, length));
        if (length == 0)
            length = json.front() == '"' ? literalLength(json) : 1;
        const std::string_view token = json.substr(0, length);
        result += isNumber && isOversized(token) ? "0.5" : token;
        json.remove_prefix(length);
    }
    return result;
}

} // namespace orvalen
