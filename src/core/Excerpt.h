#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace orvalen {

/// As many characters of a text as a view shows; more would take a toolkit seconds to lay out.
inline constexpr std::size_t shownCharacters = 1000;

/// The first characters of a UTF-8 text, followed by "…" when there are more. Pure; any thread.
std::string excerpt(std::string_view text, std::size_t characters = shownCharacters);

} // namespace orvalen
