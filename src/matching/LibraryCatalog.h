#pragma once

#include "core/LibraryIndex.h"

#include <cstddef>
#include <memory>
#include <string_view>
#include <vector>

namespace orvalen {

/// A library prepared for searching: built from a snapshot once and kept as long as the snapshot's tracks
/// live. Immutable; any thread. Building takes about half a microsecond a track, so never on the main thread.
class LibraryCatalog {
public:
    explicit LibraryCatalog(LibraryIndex index);
    ~LibraryCatalog();
    LibraryCatalog(const LibraryCatalog&) = delete;
    LibraryCatalog& operator=(const LibraryCatalog&) = delete;

    const LibraryIndex& index() const { return index_; }

    /// Positions in library order whose file-name key equals the key.
    std::vector<std::size_t> withFileNameKey(std::string_view key) const;
    /// Positions in library order whose normalised artist and title contain the needles, already normalised.
    std::vector<std::size_t> containing(std::string_view artistNeedle, std::string_view titleNeedle) const;
    /// The first position that holds an equal track; the position itself when there is none before it.
    std::size_t firstEqual(std::size_t position) const;

private:
    struct Tables;
    LibraryIndex index_;
    std::unique_ptr<const Tables> tables_;
};

} // namespace orvalen
