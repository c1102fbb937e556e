#pragma once

#include "core/LibraryIndex.h"

#include <cstdint>
#include <string_view>
#include <vector>

namespace orvalen {

/// The tracks by the hash of their file-name key. The keys themselves are not kept: the few tracks with a
/// wanted hash are looked at again. Eight bytes a track.
class FileNameTable {
public:
    explicit FileNameTable(const LibraryIndex& index);

    /// Positions in library order; the index is the one that the table was made from.
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
