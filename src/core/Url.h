#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvalen {

// Addresses by the generic syntax of URLs, absolute or relative. Nothing is trimmed, escaped or resolved, and
// all parts keep their percent escapes unless it says otherwise. Any thread.

struct Url {
    std::string scheme; ///< lower case; empty when the address is relative
    std::string host;   ///< empty when the address names none
    std::string path;   ///< without query and fragment

    /// Neither begins at a root nor is relative to one: ‘mailto:someone’.
    bool isOpaque() const { return !scheme.empty() && !path.starts_with('/'); }
    /// An address on the web: http or https, with a host.
    bool isWeb() const { return (scheme == "http" || scheme == "https") && !host.empty(); }
};

/// Nothing for an empty text and for one with a character that no URL may hold: blanks, control characters,
/// anything beyond ASCII, an incomplete percent escape.
std::optional<Url> parseUrl(std::string_view address);

/// The text with each percent sign and the two hexadecimal digits behind it as the byte that they mean.
std::string percentDecoded(std::string_view text);

/// The decoded components of the path, which may hold any byte then. Slashes are no components; an opaque
/// address has none.
std::vector<std::string> pathComponents(const Url& url);

/// Whether the text can stand, as it is, for exactly one component in the path of an address.
bool isPathSegment(std::string_view text);

} // namespace orvalen
