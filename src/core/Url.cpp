#include "core/Url.h"

#include "core/Text.h"

#include <algorithm>
#include <charconv>

namespace orvalen {
namespace {

constexpr std::string_view digits = "0123456789";
constexpr std::string_view hexDigits = "0123456789abcdefABCDEF";
constexpr std::string_view segmentPunctuation = "-._~!$&'()*+,;=:@";

bool isLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

bool isOneOf(std::string_view characters, char c) {
    return characters.find(c) != std::string_view::npos;
}

/// Returns whether the text has only letters, digits, complete percent escapes and the given punctuation.
bool consistsOf(std::string_view punctuation, std::string_view text) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '%') {
            if (i + 2 >= text.size() || !isOneOf(hexDigits, text[i + 1]) || !isOneOf(hexDigits, text[i + 2]))
                return false;
            i += 2;
        } else if (!isLetter(text[i]) && !isOneOf(digits, text[i]) && !isOneOf(punctuation, text[i])) {
            return false;
        }
    }
    return true;
}

bool isScheme(std::string_view text) {
    return !text.empty() && isLetter(text.front()) && text.find('%') == std::string_view::npos &&
           consistsOf("+-.", text);
}

/// Returns the host of ‘user@host:80’.
std::string_view hostOf(std::string_view authority) {
    authority.remove_prefix(authority.rfind('@') + 1); // removes nothing if there is no user
    if (authority.starts_with('['))
        return authority.substr(0, authority.find(']') + 1);
    return authority.substr(0, authority.find(':'));
}

} // namespace

std::string percentDecoded(std::string_view text) {
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        unsigned char code = 0;
        if (text[i] == '%' && i + 2 < text.size() &&
            std::from_chars(&text[i + 1], &text[i] + 3, code, 16).ptr == &text[i] + 3) {
            result += static_cast<char>(code);
            i += 2;
        } else {
            result += text[i];
        }
    }
    return result;
}

std::optional<Url> parseUrl(std::string_view address) {
    if (address.empty() || !consistsOf("-._~:/?#[]@!$&'()*+,;=", address))
        return std::nullopt;
    address = address.substr(0, address.find('#'));
    address = address.substr(0, address.find('?'));

    Url url;
    const std::size_t colon = std::min(address.find(':'), address.size());
    if (colon < address.find('/') && colon < address.size()) {
        if (!isScheme(address.substr(0, colon)))
            return std::nullopt;
        url.scheme = toAsciiLower(address.substr(0, colon));
        address.remove_prefix(colon + 1);
    }
    if (address.starts_with("//")) {
        address.remove_prefix(2);
        const std::size_t end = std::min(address.find('/'), address.size());
        url.host = hostOf(address.substr(0, end));
        address.remove_prefix(end);
        if (address.empty())
            address = "/"; // the path of an address that consists of a host only
    }
    url.path = address;
    return url;
}

std::vector<std::string> pathComponents(const Url& url) {
    std::vector<std::string> components;
    if (url.isOpaque())
        return components;
    std::string_view rest = url.path;
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find('/'), rest.size());
        if (end > 0)
            components.push_back(percentDecoded(rest.substr(0, end)));
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return components;
}

bool isPathSegment(std::string_view text) {
    if (text.empty() || !consistsOf(segmentPunctuation, text))
        return false;
    const std::string meaning =
        percentDecoded(text); // servers may treat an escaped dot or slash like a plain one
    return meaning != "." && meaning != ".." && !isOneOf(meaning, '/') && !isOneOf(meaning, '\\');
}

} // namespace orvalen
