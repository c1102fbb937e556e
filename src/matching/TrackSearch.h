#pragma once

#include "matching/LibraryCatalog.h"
#include "matching/WantedList.h"

#include <cstddef>
#include <string_view>
#include <vector>

namespace orvalen {

// Searches by similarity. Words may be in another order, missing, additional or misspelt. Results are
// positions in the catalog's library order, the best first. Each file appears once. The first search in a
// library builds its words (see LibraryCatalog::words), so do not search on the main thread.

inline constexpr std::size_t mostFoundTracks = 50;
inline constexpr std::size_t mostSuggestions = 3;

/// Returns the tracks whose artist and title resemble the text, at most `most`. The last word may be
/// incomplete.
std::vector<std::size_t> findTracks(const LibraryCatalog& catalog, std::string_view text,
                                    std::size_t most = mostFoundTracks);

/// Returns the tracks that the request probably means, at most `most`. No two have the same artist and title.
/// Empty if no track is likely enough.
std::vector<std::size_t> suggestTracks(const LibraryCatalog& catalog, const Request& request,
                                       std::size_t most = mostSuggestions);

} // namespace orvalen
