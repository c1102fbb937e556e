#pragma once

#include <string>
#include <string_view>

namespace orvalen {

/// The JSON text with 0.5 in the place of each number that neither 64-bit integers nor doubles can hold, so
/// that a parser which refuses such numbers reads the rest. What is not a number, or not JSON, stays as it
/// is.
std::string withoutOversizedNumbers(std::string_view json);

} // namespace orvalen
