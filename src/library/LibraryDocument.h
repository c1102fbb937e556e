#pragma once

#include "core/LibraryIndex.h"
#include "core/Location.h"
#include "library/PlaylistDatabaseManager.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvalen {

// What a library file holds, as text and back. Pure; any thread.

struct LibraryDocument {
    LibraryIndex index;
    std::optional<PreferredMatches> preferred; ///< absent: the file says nothing usable about them
    std::vector<Location> folders;
};

/// One JSON object, indented, without the preferred matches when they are not known; handed to its one use
/// where it was made, because a copy would be as large as the file.
void writeLibraryDocument(const LibraryIndex& index, const std::optional<PreferredMatches>& preferred,
                          const std::vector<Location>& folders,
                          const std::function<void(std::string_view)>& use);

/// Nothing when the bytes are no such object, one of the tracks is none, or memory does not suffice;
/// preferred matches and folders of another shape are left out.
std::optional<LibraryDocument> readLibraryDocument(std::string bytes);

/// An object with the preferred matches alone, in the same form.
std::string preferredMatchesText(const PreferredMatches& preferred);
/// The preferred matches of such an object; nothing when it has none or memory does not suffice.
std::optional<PreferredMatches> readPreferredMatches(std::string bytes);

/// The automatic backup's text: every track with a "bpm" (0 where it has none) and the preferred matches as
/// one object. Any thread.
std::string librarySnapshotText(const LibraryIndex& index, const PreferredMatches& preferred);

} // namespace orvalen
