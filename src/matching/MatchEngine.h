#pragma once

#include "core/LibraryIndex.h"
#include "matching/LibraryCatalog.h"
#include "matching/WantedList.h"

#include <cstddef>
#include <string_view>
#include <vector>

namespace orvalen {

// Positions are in the catalog's library order. Thread-safe.

/// Returns the positions of the tracks with the file-name key, in library order.
std::vector<std::size_t> matchesByFileName(const LibraryCatalog& catalog, std::string_view key);
/// Returns the positions of the tracks that pass the containment test, in library order.
std::vector<std::size_t> matchesByArtistTitle(const LibraryCatalog& catalog, std::string_view artist,
                                              std::string_view title);
/// Returns the candidates for the request: tracks with its library key, then by file name, then by
/// containment. Equal tracks appear once.
std::vector<std::size_t> findOptions(const LibraryCatalog& catalog, const Request& request);

} // namespace orvalen
