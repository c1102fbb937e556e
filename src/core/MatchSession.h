#pragma once

#include "core/MatchedTrack.h"

#include <string>
#include <vector>

namespace orvalen {

/// The saved state of a matching session: the wanted text and the reviewed rows.
struct MatchSession {
    std::string matchInput;
    std::vector<MatchedTrack> matchedTracks;
};

} // namespace orvalen
