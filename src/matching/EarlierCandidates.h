#pragma once

#include "core/MatchedTrack.h"

#include <cstddef>
#include <optional>
#include <vector>

namespace orvalen {

struct ContentView;

// Candidates that the user chose earlier and that are no longer preferred matches; see
// library/EarlierChoices.h. Main thread.

struct EarlierCandidate {
    std::size_t row;
    std::size_t option;
};

/// Returns the index of the candidate that was chosen earlier for the row, or nullopt.
std::optional<std::size_t> earlierOption(const ContentView& view, const MatchedTrack& row);
/// Returns the rows with a candidate that was chosen earlier and is not selected now, in row order.
std::vector<EarlierCandidate> earlierCandidates(const ContentView& view);

} // namespace orvalen
