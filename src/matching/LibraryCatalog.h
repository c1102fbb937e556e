#pragma once

#include "core/LibraryIndex.h"

#include <cstddef>
#include <memory>
#include <string_view>
#include <vector>

namespace orvalen {

class WordTable;

/// The search tables of a library index. Immutable and thread-safe.
///
/// The first catalog of an index builds the tables. This takes up to half a microsecond per track: do not
/// create it on the main thread. The tables are cached in the index, so later catalogs of the same tracks
/// cost nothing.
class LibraryCatalog {
public:
    explicit LibraryCatalog(LibraryIndex index);

    const LibraryIndex& index() const { return index_; }

    /// Returns the positions of the tracks with the file-name key, in library order.
    std::vector<std::size_t> withFileNameKey(std::string_view key) const;
    /// Returns the positions of the tracks whose normalised artist and title contain the needles, in library
    /// order. The needles must be normalised. Empty if one of them is empty.
    std::vector<std::size_t> containing(std::string_view artistNeedle, std::string_view titleNeedle) const;
    /// Returns the words of the library, for searches by similarity. Cached like the other tables. The first
    /// call builds them while others wait, which takes about two microseconds per track: do not call it on
    /// the main thread.
    const WordTable& words() const;

private:
    struct Tables;
    LibraryIndex index_;
    std::shared_ptr<const Tables> tables_;
};

} // namespace orvalen
