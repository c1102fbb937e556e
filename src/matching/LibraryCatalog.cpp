#include "matching/LibraryCatalog.h"

#include "core/Keys.h"

namespace orvalen {

struct LibraryCatalog::Tables {};

LibraryCatalog::LibraryCatalog(LibraryIndex index) : index_(std::move(index)) {}
LibraryCatalog::~LibraryCatalog() = default;

std::vector<std::size_t> LibraryCatalog::withFileNameKey(std::string_view key) const {
    std::vector<std::size_t> positions;
    for (std::size_t position = 0; position < index_.trackCount(); ++position)
        if (fileNameKey(index_.track(position).path) == key)
            positions.push_back(position);
    return positions;
}

std::vector<std::size_t> LibraryCatalog::containing(std::string_view artistNeedle,
                                                    std::string_view titleNeedle) const {
    std::vector<std::size_t> positions;
    for (std::size_t position = 0; position < index_.trackCount(); ++position)
        if (containsNormalized(normalize(index_.track(position).artist), artistNeedle) &&
            containsNormalized(normalize(index_.track(position).title), titleNeedle))
            positions.push_back(position);
    return positions;
}

std::size_t LibraryCatalog::firstEqual(std::size_t position) const {
    const TrackView track = index_.track(position);
    const PositionRange list = index_.positionsUnder(index_.key(position));
    for (std::size_t earlier = list.first; earlier < position; ++earlier)
        if (index_.track(earlier) == track)
            return earlier;
    return position;
}

} // namespace orvalen
