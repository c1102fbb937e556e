#pragma once

#include <chrono>

namespace orvalen {

enum class BusAnswer {
    none,   ///< there is no session bus, or it refuses connections
    silent, ///< there is a session bus, but it does not answer within the limit
    answers
};

/// Connects to the session bus named by the environment and waits for its first answer. Blocks at most
/// `limit`. Addresses that are not local sockets count as `none`. Thread-safe while no thread changes the
/// environment.
BusAnswer probeSessionBus(std::chrono::milliseconds limit);

} // namespace orvalen
