#pragma once

#include "core/Track.h"
#include "core/Uuid.h"

#include <optional>
#include <string>
#include <vector>

namespace orvalen {

/// One wanted line with its candidates and its pick. Rows are identified by `id` alone.
struct MatchedTrack {
    UUID id;
    std::string title;  ///< as wanted: trimmed, not normalised
    std::string artist; ///< as wanted: trimmed, not normalised
    bool found = false;
    std::vector<Track> options;
    std::optional<Track> selectedTrack; ///< what the row stands for in the playlist
    bool include = false;               ///< whether the row goes into exported playlists
};

} // namespace orvalen
