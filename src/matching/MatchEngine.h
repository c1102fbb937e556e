#pragma once

#include "core/LibraryIndex.h"
#include "core/MatchedTrack.h"
#include "matching/LibraryCatalog.h"
#include "matching/WantedList.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace orvalen {

struct ContentView;

// Positions are places in the catalog's library order.

/// The positions whose file-name key equals the key, in library order.
std::vector<std::size_t> matchesByFileName(const LibraryCatalog& catalog, std::string_view key);
/// The positions that pass the containment test, in library order.
std::vector<std::size_t> matchesByArtistTitle(const LibraryCatalog& catalog, std::string_view artist,
                                              std::string_view title);
/// The distinct tracks that the request may mean, in the order first seen: exact key, file name, containment.
std::vector<std::size_t> findOptions(const LibraryCatalog& catalog, const Request& request);

/// Matches the lines on the match queue against the library and the line format as they are now; the rows
/// reach the state when all are done. Main thread; returns at once.
void matchLines(std::vector<std::string> lines, ContentView& view);

/// Makes the catalog of the current library on the match queue, so that the next run need not wait for it.
/// Main thread; returns at once.
void prepareMatching(ContentView& view);

} // namespace orvalen
