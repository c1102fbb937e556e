#include "matching/ArtistTable.h"

#include "core/HashedNumbers.h"

#include <functional>

namespace orvalen {

ArtistTable::ArtistTable(const LibraryIndex& index) : grams_(numberArtists(index)) {
    groupPositions();
}

std::span<const std::uint32_t> ArtistTable::positionsOf(std::size_t artist) const {
    return std::span(positions_).subspan(starts_[artist], starts_[artist + 1] - starts_[artist]);
}

GramBitmaps ArtistTable::numberArtists(const LibraryIndex& index) {
    HashedNumbers numbers;
    std::vector<std::string_view> names;
    artistOf_.reserve(index.trackCount());
    for (std::size_t position = 0; position < index.trackCount(); ++position) {
        const std::string_view name = index.keyHalves(position).artist;
        const std::size_t hash = std::hash<std::string_view>{}(name);
        auto number = numbers.find(hash, [&](std::uint32_t known) { return names[known] == name; });
        if (!number) {
            number = static_cast<std::uint32_t>(names.size());
            names.push_back(name);
            numbers.insert(hash, *number);
        }
        artistOf_.push_back(*number);
    }
    starts_.resize(names.size() + 1);
    return GramBitmaps(names.size(), [&names](std::size_t artist) { return names[artist]; });
}

void ArtistTable::groupPositions() {
    for (const std::uint32_t artist : artistOf_)
        ++starts_[artist + 1];
    for (std::size_t artist = 1; artist < starts_.size(); ++artist)
        starts_[artist] += starts_[artist - 1];
    std::vector<std::uint32_t> places(starts_.begin(), starts_.end() - 1);
    positions_.resize(artistOf_.size());
    for (std::size_t position = 0; position < artistOf_.size(); ++position)
        positions_[places[artistOf_[position]]++] = static_cast<std::uint32_t>(position);
}

} // namespace orvalen
