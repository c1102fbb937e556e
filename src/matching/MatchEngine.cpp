#include "matching/MatchEngine.h"

#include "core/Keys.h"

#include <algorithm>
#include <unordered_set>

namespace orvalen {
namespace {

bool holds(const std::vector<std::size_t>& ascending, std::size_t position) {
    return std::binary_search(ascending.begin(), ascending.end(), position);
}

} // namespace

std::vector<std::size_t> matchesByFileName(const LibraryCatalog& catalog, std::string_view key) {
    return catalog.withFileNameKey(key);
}

std::vector<std::size_t> matchesByArtistTitle(const LibraryCatalog& catalog, std::string_view artist,
                                              std::string_view title) {
    return catalog.containing(normalize(artist), normalize(title));
}

std::vector<std::size_t> findOptions(const LibraryCatalog& catalog, const Request& request) {
    const std::string key = libraryKey(request.artist, request.title);
    const PositionRange exact = catalog.index().positionsUnder(key);
    const std::vector<std::size_t> byFileName = matchesByFileName(catalog, key);
    const std::vector<std::size_t> byContainment =
        matchesByArtistTitle(catalog, request.artist, request.title);

    std::vector<std::size_t> options;
    std::unordered_set<TrackView, TrackHash> seen;
    const auto add = [&](std::size_t position) {
        if (seen.insert(catalog.index().track(position)).second)
            options.push_back(position);
    };
    const auto isExact = [&exact](std::size_t position) {
        return position >= exact.first && position < exact.last;
    };
    for (std::size_t position = exact.first; position < exact.last; ++position)
        add(position);
    for (const std::size_t position : byFileName)
        if (!isExact(position))
            add(position);
    for (const std::size_t position : byContainment)
        if (!isExact(position) && !holds(byFileName, position))
            add(position);
    return options;
}

} // namespace orvalen
