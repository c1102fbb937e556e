#pragma once

#include <chrono>

namespace orvalen {

enum class BusAnswer {
    none,   ///< there is no session bus, or it refuses connections
    silent, ///< it accepts connections and answers nothing within the limit
    answers
};

/// Asks the session bus of the environment for its first answer, over a connection of its own. Blocks for at
/// most `limit`. Addresses other than sockets of this machine are not asked: they count as `none`.
/// Thread-safe while nobody changes the environment.
BusAnswer probeSessionBus(std::chrono::milliseconds limit);

} // namespace orvalen
