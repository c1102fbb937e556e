#pragma once

#include "core/MatchedTrack.h"

#include <cstddef>
#include <string>
#include <vector>

namespace orvalen {

/// What an export of the rows would write.
struct PlaylistCounts {
    std::size_t written = 0;  ///< included rows with a selected track
    std::size_t missing = 0;  ///< included rows without one
    std::size_t repeated = 0; ///< files that are written more than once
};

/// Counts what an export of the rows would write. Thread-safe, like the functions below.
PlaylistCounts playlistCounts(const std::vector<MatchedTrack>& rows);
/// Returns ‘90 files will be written; 66 selected rows have no file; 2 files are written twice or more’.
/// Empty if every included row has a file and no file is repeated.
std::string playlistCaption(const PlaylistCounts& counts);
/// Returns the rows without a selected track, included or not: one line "Artist – Title" per row.
std::string missingList(const std::vector<MatchedTrack>& rows);

} // namespace orvalen
