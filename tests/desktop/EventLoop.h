#pragma once

#include <chrono>
#include <functional>

namespace orvalen::test {

/// Turns the event loop until the condition holds; false when it does not within the time.
bool turnUntil(const std::function<bool()>& condition,
               std::chrono::milliseconds limit = std::chrono::seconds(5));

/// Turns the event loop for so long.
void turnFor(std::chrono::milliseconds time);

} // namespace orvalen::test
