#pragma once

#include "core/LibraryIndex.h"
#include "matching/LibraryCatalog.h"
#include "matching/WantedList.h"

#include <cstddef>
#include <string_view>
#include <vector>

namespace orvalen {

// Positions are places in the catalog's library order.

/// The positions whose file-name key equals the key, in library order.
std::vector<std::size_t> matchesByFileName(const LibraryCatalog& catalog, std::string_view key);
/// The positions that pass the containment test, in library order.
std::vector<std::size_t> matchesByArtistTitle(const LibraryCatalog& catalog, std::string_view artist,
                                              std::string_view title);
/// The distinct tracks that the request may mean, in the order first seen: exact key, file name, containment.
std::vector<std::size_t> findOptions(const LibraryCatalog& catalog, const Request& request);

} // namespace orvalen
