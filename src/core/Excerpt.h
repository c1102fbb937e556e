#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace orvalen {

/// The number of characters that a view shows of one text. Laying out longer texts takes the toolkit seconds.
inline constexpr std::size_t shownCharacters = 1000;

/// Returns the first `characters` code points of a UTF-8 text, followed by "…" if there are more.
/// Thread-safe.
std::string excerpt(std::string_view text, std::size_t characters = shownCharacters);

} // namespace orvalen
