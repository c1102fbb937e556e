#pragma once

#include "core/Track.h"
#include "core/Uuid.h"

#include <optional>
#include <string>
#include <vector>

namespace orvalen {

/// One row: a request with its candidates and its selected track. Rows are identified by `id` alone.
struct MatchedTrack {
    UUID id;
    std::string title;  ///< as in the wanted line: trimmed, not normalised
    std::string artist; ///< as in the wanted line: trimmed, not normalised
    bool found = false;
    std::vector<Track> options;
    std::optional<Track> selectedTrack; ///< the track that the playlist gets for this row
    bool include = false;               ///< whether exported playlists contain the row
};

} // namespace orvalen
