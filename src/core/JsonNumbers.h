#pragma once

#include <string>
#include <string_view>

namespace orvalen {

/// Returns a copy of the JSON text in which 0.5 replaces each number that fits neither a 64-bit integer nor a
/// double. The parser rejects such numbers, even in members that are ignored.
std::string withoutOversizedNumbers(std::string_view json);

} // namespace orvalen
