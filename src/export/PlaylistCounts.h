#pragma once

#include "core/MatchedTrack.h"

#include <cstddef>
#include <string>
#include <vector>

namespace orvalen {

/// What an export of the rows writes. Pure functions; any thread.
struct PlaylistCounts {
    std::size_t written = 0;  ///< entries: included rows that have a file
    std::size_t missing = 0;  ///< included rows without a file
    std::size_t repeated = 0; ///< files that are written more than once
};

PlaylistCounts playlistCounts(const std::vector<MatchedTrack>& rows);
/// ‘90 files will be written; 66 selected rows have no file; 2 files are written twice or more’; empty when
/// every included row has a file of its own.
std::string playlistCaption(const PlaylistCounts& counts);
/// The rows without a file, included or not: one "Artist – Title" a line, in row order.
std::string missingList(const std::vector<MatchedTrack>& rows);

} // namespace orvalen
