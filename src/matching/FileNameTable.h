#pragma once

#include "core/LibraryIndex.h"

#include <cstdint>
#include <string_view>
#include <vector>

namespace orvalen {

/// Finds tracks by the hash of their file-name key. The keys are not stored: find() computes those of tracks
/// with an equal hash again. Needs eight bytes per track.
class FileNameTable {
public:
    explicit FileNameTable(const LibraryIndex& index);

    /// Returns the positions of the tracks with the key, in library order. `index` must be the one the table
    /// was built from.
    std::vector<std::size_t> find(const LibraryIndex& index, std::string_view key) const;

private:
    struct Entry {
        std::uint32_t hash;
        std::uint32_t position;
        auto operator<=>(const Entry&) const = default;
    };

    std::vector<Entry> entries_; ///< sorted
};

} // namespace orvalen
