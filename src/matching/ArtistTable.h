#pragma once

#include "core/LibraryIndex.h"
#include "matching/GramBitmaps.h"

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace orvalen {

/// The distinct normalised artists, numbered in the order of their first track, and the tracks of each. Needs
/// eight bytes per track and about forty per artist.
class ArtistTable {
public:
    explicit ArtistTable(const LibraryIndex& index);

    std::uint32_t artistOf(std::size_t position) const { return artistOf_[position]; }
    /// Returns the positions of the artist's tracks, in library order.
    std::span<const std::uint32_t> positionsOf(std::size_t artist) const;
    /// Returns a superset of the artists that contain `needle`, which must not be empty.
    Bitmap candidates(std::string_view needle) const { return grams_.candidates(needle); }

private:
    GramBitmaps numberArtists(const LibraryIndex& index);
    void groupPositions();

    std::vector<std::uint32_t> artistOf_;
    std::vector<std::uint32_t>
        starts_; ///< start of each artist's range in positions_, and the end of the last range
    std::vector<std::uint32_t> positions_;
    GramBitmaps grams_;
};

} // namespace orvalen
