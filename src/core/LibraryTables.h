#pragma once

#include "core/HashedNumbers.h"
#include "core/LibraryIndex.h"
#include "core/TextBlocks.h"

#include <cstdint>
#include <mutex>
#include <vector>

namespace orvalen {

// How an index keeps its tracks. Only the index and its builder look in here.

/// One track: its texts stand one behind the other, title, artist, genre, path.
struct TrackRecord {
    const char* texts = nullptr;
    std::int64_t bpm = 0;
    std::uint32_t titleLength = 0;
    std::uint32_t artistLength = 0;
    std::uint32_t genreLength = 0;
    std::uint32_t pathLength : 31 = 0;
    std::uint32_t hasBPM : 1 = 0;
    std::uint32_t key = 0;
    std::uint32_t artistInKey = 0; ///< length of the normalised artist at the key's beginning

    TrackView view() const;
    std::string_view path() const { return {texts + titleLength + artistLength + genreLength, pathLength}; }
};

struct KeyRecord {
    const char* text = nullptr;
    std::uint32_t length = 0;
    std::uint32_t firstPosition = 0;

    std::string_view view() const { return {text, length}; }
};

/// How a path goes on from the one before it.
struct PathStep {
    std::uint16_t shared = 0; ///< bytes that both have in common, or the most that fits
    std::uint8_t next = 0;    ///< the byte after them, 0 at the path's end; not ASCII when more is shared
};

struct LibraryTables {
    TextBlocks texts;
    std::vector<TrackRecord> records; ///< in library order
    std::vector<KeyRecord> keys;      ///< as first filed
    HashedNumbers keyNumbers;
    std::vector<PathStep> pathSteps;
    /// The least that is shared in each block of pathSteps.
    std::vector<std::uint16_t> leastSharedPathLengths;
    static constexpr std::size_t pathBlock = 64;

    std::optional<std::uint32_t> findKey(std::string_view key) const;
    PositionRange positionsOf(std::uint32_t key) const;
    PathStep pathStep(std::size_t position) const;
    void noteLeastSharedPathLengths();
};

struct LibraryIndex::Body : LibraryTables {
    explicit Body(LibraryTables tables) : LibraryTables(std::move(tables)) {}

    mutable std::mutex derivedMutex;
    mutable Derived derived;
};

/// Makes a track's record and the key it belongs under; keeps its working space between tracks.
class TrackFiler {
public:
    /// Copies the texts and, for a key that is new, adds it without positions.
    TrackRecord file(const TrackView& track, LibraryTables& tables);

private:
    std::uint32_t keyNumber(LibraryTables& tables);

    std::string key_;
    std::string title_;
};

} // namespace orvalen
