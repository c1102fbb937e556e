#pragma once

#include "core/MatchedTrack.h"

#include <cstddef>
#include <optional>
#include <vector>

namespace orvalen {

struct ContentView;

// Candidates that the user chose in an earlier run, where the choice is no longer a preferred match. Main
// thread.

struct EarlierCandidate {
    std::size_t row;
    std::size_t option;
};

/// The position among the row's candidates of the one that was chosen earlier; nothing when there is none.
std::optional<std::size_t> earlierOption(const ContentView& view, const MatchedTrack& row);
/// The rows that have such a candidate and another selection, in order.
std::vector<EarlierCandidate> earlierCandidates(const ContentView& view);

} // namespace orvalen
