#pragma once

#include <string>
#include <string_view>

namespace orvalen {

/// Returns the JSON text with each number that fits neither a 64-bit integer nor a double replaced by 0.5.
/// simdjson rejects such numbers, even in members that are ignored. All other text is copied.
std::string withoutOversizedNumbers(std::string_view json);

} // namespace orvalen
