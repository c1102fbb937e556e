#include "matching/LibraryCatalog.h"

#include "core/Keys.h"
#include "matching/ArtistTable.h"
#include "matching/FileNameTable.h"
#include "matching/GramBitmaps.h"
#include "search/WordTable.h"

#include <algorithm>
#include <mutex>
#include <optional>

namespace orvalen {
namespace {

/// Up to this many artists and tracks are compared one by one. For more, the bitmaps of the titles are used
/// first.
constexpr std::size_t fewArtists = 256;
constexpr std::size_t fewTracks = 1024;

} // namespace

struct LibraryCatalog::Tables {
    explicit Tables(const LibraryIndex& index)
        : artists(index), titles(index.trackCount(),
                                 [&index](std::size_t position) { return index.keyHalves(position).title; }),
          fileNames(index) {}

    /// Returns the tracks of the artists that contain `needle`, or nullopt if there are too many.
    std::optional<std::vector<std::size_t>> tracksOfFew(const LibraryIndex& index, const Bitmap& candidates,
                                                        std::string_view needle) const;

    ArtistTable artists;
    GramBitmaps titles;
    FileNameTable fileNames;
    mutable std::once_flag wordsMade;
    mutable std::optional<WordTable> words;
};

LibraryCatalog::LibraryCatalog(LibraryIndex index)
    : index_(std::move(index)), tables_(std::static_pointer_cast<const Tables>(
                                    index_.cached([](const LibraryIndex& tracks) -> LibraryIndex::Cache {
                                        return std::make_shared<const Tables>(tracks);
                                    }))) {}

std::vector<std::size_t> LibraryCatalog::withFileNameKey(std::string_view key) const {
    return tables_->fileNames.find(index_, key);
}

const WordTable& LibraryCatalog::words() const {
    std::call_once(tables_->wordsMade, [this] { tables_->words.emplace(index_); });
    return *tables_->words;
}

std::optional<std::vector<std::size_t>> LibraryCatalog::Tables::tracksOfFew(const LibraryIndex& index,
                                                                            const Bitmap& candidates,
                                                                            std::string_view needle) const {
    if (countBits(candidates) > fewArtists)
        return std::nullopt;
    std::vector<std::size_t> tracks;
    bool areFew = true;
    forEachBit(candidates, [&](std::size_t artist) {
        const auto positions = artists.positionsOf(artist);
        if (!areFew || !containsNormalized(index.keyHalves(positions[0]).artist, needle))
            return;
        areFew = tracks.size() + positions.size() <= fewTracks;
        if (areFew)
            tracks.insert(tracks.end(), positions.begin(), positions.end());
    });
    return areFew ? std::optional(std::move(tracks)) : std::nullopt;
}

std::vector<std::size_t> LibraryCatalog::containing(std::string_view artistNeedle,
                                                    std::string_view titleNeedle) const {
    if (artistNeedle.empty() || titleNeedle.empty() || index_.empty())
        return {};
    const Bitmap artists = tables_->artists.candidates(artistNeedle);
    if (auto tracks = tables_->tracksOfFew(index_, artists, artistNeedle)) {
        std::erase_if(*tracks, [&](std::size_t position) {
            return !containsNormalized(index_.keyHalves(position).title, titleNeedle);
        });
        std::sort(tracks->begin(), tracks->end());
        return *std::move(tracks);
    }

    std::vector<std::size_t> positions;
    forEachBit(tables_->titles.candidates(titleNeedle), [&](std::size_t position) {
        if (!contains(artists, tables_->artists.artistOf(position)))
            return;
        const KeyHalves halves = index_.keyHalves(position);
        if (containsNormalized(halves.title, titleNeedle) && containsNormalized(halves.artist, artistNeedle))
            positions.push_back(position);
    });
    return positions;
}

} // namespace orvalen
