#pragma once

#include "core/LibraryIndex.h"
#include "library/PlaylistDatabaseManager.h"

#include <string>

namespace orvalen {

/// The automatic backup's text: every track with a "bpm" (0 where it has none) and the preferred matches as
/// one object. Any thread.
std::string librarySnapshotText(const LibraryIndex& index, const PreferredMatches& preferred);

} // namespace orvalen
