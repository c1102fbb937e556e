#pragma once

#include "core/LibraryIndex.h"

#include <cstddef>
#include <memory>
#include <string_view>
#include <vector>

namespace orvalen {

class WordTable;

/// A library prepared for searching. The first catalog of an index takes up to half a microsecond a track to
/// make, so never on the main thread; the work is kept as long as the index's tracks live, and every later
/// catalog of the same tracks is there at once. Immutable; any thread.
class LibraryCatalog {
public:
    explicit LibraryCatalog(LibraryIndex index);

    const LibraryIndex& index() const { return index_; }

    /// Positions in library order whose file-name key equals the key.
    std::vector<std::size_t> withFileNameKey(std::string_view key) const;
    /// Positions in library order whose normalised artist and title contain the needles, already normalised.
    std::vector<std::size_t> containing(std::string_view artistNeedle, std::string_view titleNeedle) const;
    /// The words of the library, for searches by similarity. Made by the first call while others wait, which
    /// takes about two microseconds a track, so never on the main thread; kept like the rest.
    const WordTable& words() const;

private:
    struct Tables;
    LibraryIndex index_;
    std::shared_ptr<const Tables> tables_;
};

} // namespace orvalen
