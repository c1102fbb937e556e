#pragma once

#include "core/MatchedTrack.h"

#include <string>
#include <vector>

namespace orvalen {

/// The content of a session file: the wanted text and the reviewed rows.
struct MatchSession {
    std::string matchInput;
    std::vector<MatchedTrack> matchedTracks;
};

} // namespace orvalen
