#pragma once

#include "core/LibraryIndex.h"
#include "matching/GramBitmaps.h"

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace orvalen {

/// The distinct normalised artists, numbered as they first occur, and the tracks of each. Eight bytes a track
/// and about forty an artist.
class ArtistTable {
public:
    explicit ArtistTable(const LibraryIndex& index);

    std::uint32_t artistOf(std::size_t position) const { return artistOf_[position]; }
    /// In library order.
    std::span<const std::uint32_t> positionsOf(std::size_t artist) const;
    /// A superset of the artists that contain the needle; the needle is not empty.
    Bitmap candidates(std::string_view needle) const { return grams_.candidates(needle); }

private:
    GramBitmaps numberArtists(const LibraryIndex& index);
    void groupPositions();

    std::vector<std::uint32_t> artistOf_;
    std::vector<std::uint32_t> starts_; ///< of each artist's run in positions_, and the end of the last
    std::vector<std::uint32_t> positions_;
    GramBitmaps grams_;
};

} // namespace orvalen
