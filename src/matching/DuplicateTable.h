#pragma once

#include "core/LibraryIndex.h"

#include <cstdint>
#include <vector>

namespace orvalen {

/// The tracks that equal one filed before them: mostly none, or those of a folder that was scanned twice.
class DuplicateTable {
public:
    explicit DuplicateTable(const LibraryIndex& index);

    /// The first position that holds an equal track; the position itself when there is none before it.
    std::size_t firstEqual(std::size_t position) const;

private:
    struct Duplicate {
        std::uint32_t position;
        std::uint32_t first;
    };

    void addFrom(const LibraryIndex& index, PositionRange sameKey);

    std::vector<Duplicate> duplicates_; ///< by position
};

} // namespace orvalen
