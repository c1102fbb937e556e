#pragma once

#include "matching/LibraryCatalog.h"
#include "matching/WantedList.h"

#include <cstddef>
#include <string_view>
#include <vector>

namespace orvalen {

// Looks for tracks by similarity: words may stand in any order, be missing, be too many or be misspelt.
// Results are positions in the catalog's library order, the best first; each file appears once. The first
// call for a library makes its word table (see LibraryCatalog::words), so never on the main thread.

inline constexpr std::size_t mostFoundTracks = 50;
inline constexpr std::size_t mostSuggestions = 3;

/// The tracks whose artists and titles resemble the text, at most `most`; the last word may be unfinished.
std::vector<std::size_t> findTracks(const LibraryCatalog& catalog, std::string_view text,
                                    std::size_t most = mostFoundTracks);

/// The tracks that the request probably means, at most `most`, no two with equal artist and title; empty when
/// none is likely enough to be proposed unasked.
std::vector<std::size_t> suggestTracks(const LibraryCatalog& catalog, const Request& request,
                                       std::size_t most = mostSuggestions);

} // namespace orvalen
