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

// The JSON of library files. Thread-safe.

struct LibraryDocument {
    LibraryIndex index;
    std::optional<PreferredMatches> preferred; ///< nullopt if the file has no valid preferred matches
    std::vector<Location> folders;
};

/// Writes an indented JSON object and passes it to `use` once. The text is valid during that call only, which
/// avoids a copy as large as the file. Without `preferred`, the object has no preferred matches.
void writeLibraryDocument(const LibraryIndex& index, const std::optional<PreferredMatches>& preferred,
                          const std::vector<Location>& folders,
                          const std::function<void(std::string_view)>& use);

/// Decodes a library file. Returns nullopt if the bytes are not a JSON object with tracks, if a track is
/// invalid, or if memory is exhausted. Invalid preferred matches and folders are ignored.
std::optional<LibraryDocument> readLibraryDocument(std::string bytes);

/// Returns a JSON object with only the preferred matches, in the form of library files.
std::string preferredMatchesText(const PreferredMatches& preferred);
/// Decodes the result of preferredMatchesText(). Returns nullopt if it has no valid preferred matches or
/// memory is exhausted.
std::optional<PreferredMatches> readPreferredMatches(std::string bytes);

/// Writes the text of an automatic backup and passes it to `use`, as writeLibraryDocument() does: all tracks,
/// each with a "bpm" (0 if it has none), and the preferred matches as one object.
void writeLibrarySnapshot(const LibraryIndex& index, const PreferredMatches& preferred,
                          const std::function<void(std::string_view)>& use);

} // namespace orvalen
