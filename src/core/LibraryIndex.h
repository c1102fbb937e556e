#pragma once

#include "core/Track.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>

namespace orvalen {

/// A run of positions in library order: first is in it, last is not.
struct PositionRange {
    std::size_t first = 0;
    std::size_t last = 0;

    std::size_t size() const { return last - first; }
    bool empty() const { return first == last; }
};

/// A key's two parts: the normalised artist and the normalised title, each without the space between them.
struct KeyHalves {
    std::string_view artist;
    std::string_view title;
};

/// Every known audio file, filed under its library key. A value: copying one shares the tracks, and a copy
/// never sees what is filed in another afterwards, so a copy is the snapshot that a worker or a writer reads.
///
/// Library order is the order of the keys as they were first filed, and under each key the order of filing.
/// A position is a place in that order. Views are valid as long as some copy of the index they came from is.
class LibraryIndex {
public:
    LibraryIndex();

    bool empty() const { return keyCount() == 0; }
    std::size_t keyCount() const;
    std::size_t trackCount() const;

    TrackView track(std::size_t position) const;
    /// The key that the track at the position is filed under.
    std::string_view key(std::size_t position) const;
    KeyHalves keyHalves(std::size_t position) const;
    /// The positions filed under the key; an empty run when there is no such key.
    PositionRange positionsUnder(std::string_view key) const;

    /// Whether both share their tracks, so that a cache of one is valid for the other.
    bool sharesTracksWith(const LibraryIndex& other) const { return body_ == other.body_; }

    /// A cache attached to the index: made by the first caller while others wait, shared by all copies. It
    /// must not hold a LibraryIndex, which would form a reference cycle. An index has one cache.
    using Cache = std::shared_ptr<const void>;
    Cache cached(Cache (*make)(const LibraryIndex&)) const;

    struct Body;

private:
    friend class LibraryIndexBuilder;
    friend void fileTrack(LibraryIndex& index, const Track& track);
    friend std::int64_t countTracksUnderFolder(const LibraryIndex& index, std::string_view folder);
    explicit LibraryIndex(std::shared_ptr<const Body> body);

    std::shared_ptr<const Body> body_;
};

/// Files one more track in an index that stands; copies that were taken before do not see it.
void fileTrack(LibraryIndex& index, const Track& track);

inline std::int64_t countTracks(const LibraryIndex& index) {
    return static_cast<std::int64_t>(index.trackCount());
}

} // namespace orvalen
