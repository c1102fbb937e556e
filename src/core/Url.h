#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvalen {

// URLs by the generic syntax, absolute or relative. Nothing is trimmed, escaped or resolved. Percent escapes
// stay, except in pathComponents(). Thread-safe.

struct Url {
    std::string scheme; ///< lower case; empty if the address is relative
    std::string host;   ///< empty if the address has no host
    std::string path;   ///< without query and fragment

    /// Returns whether the URL has a scheme and its path does not start with ‘/’, as in ‘mailto:someone’.
    bool isOpaque() const { return !scheme.empty() && !path.starts_with('/'); }
    /// Returns whether the URL is http or https with a host.
    bool isWeb() const { return (scheme == "http" || scheme == "https") && !host.empty(); }
};

/// Parses an address. Returns nullopt for an empty text, an incomplete percent escape, or a character that no
/// URL contains (blanks, control characters, characters beyond ASCII).
std::optional<Url> parseUrl(std::string_view address);

/// Returns the text with each percent escape replaced by its byte.
std::string percentDecoded(std::string_view text);

/// Returns the decoded components of the path. They may contain any byte. Slashes are not components. Empty
/// for an opaque URL.
std::vector<std::string> pathComponents(const Url& url);

/// Returns whether the text can be used in a URL, without further escaping, as exactly one component of the
/// path. False for ".", ".." and text with a slash or backslash, escaped or not.
bool isPathSegment(std::string_view text);

} // namespace orvalen
