#pragma once

#include "core/HashedNumbers.h"
#include "core/LibraryIndex.h"
#include "core/TextBlocks.h"

#include <cstdint>
#include <deque>
#include <mutex>
#include <string>
#include <vector>

namespace orvalen {

// The storage of a library index. For the index and its builder only.

/// One track. `texts` points to its title, artist, genre and path, one after another.
struct TrackRecord {
    const char* texts = nullptr;
    std::int64_t bpm = 0;
    std::uint32_t titleLength = 0;
    std::uint32_t artistLength = 0;
    std::uint32_t genreLength = 0;
    std::uint32_t pathLength : 31 = 0;
    std::uint32_t hasBPM : 1 = 0;
    std::uint32_t key = 0;
    std::uint32_t artistInKey = 0; ///< length of the normalised artist at the start of the key

    TrackView view() const;
    std::string_view path() const { return {texts + titleLength + artistLength + genreLength, pathLength}; }
};

struct KeyRecord {
    const char* text = nullptr;
    std::uint32_t length = 0;
    std::uint32_t firstPosition = 0;

    std::string_view view() const { return {text, length}; }
};

/// The folders of the tracks, in library order. Neighbouring tracks in one folder form one run.
struct FolderTable {
    explicit FolderTable(const std::vector<TrackRecord>& records);

    struct Run {
        std::string_view folder; ///< composed (NFC), with the last slash
        std::uint32_t first;     ///< position of the first track
        std::uint32_t shared;    ///< length of the common prefix with the previous run's folder
    };
    std::vector<Run> runs;
    std::deque<std::string> composedFolders; ///< texts of the folders that are not ASCII
};

struct LibraryTables {
    TextBlocks texts;
    std::vector<TrackRecord> records; ///< in library order
    std::vector<KeyRecord> keys;      ///< in the order of their first track
    HashedNumbers keyNumbers;

    std::optional<std::uint32_t> findKey(std::string_view key) const;
    PositionRange positionsOf(std::uint32_t key) const;
};

struct LibraryIndex::Body : LibraryTables {
    explicit Body(LibraryTables tables) : LibraryTables(std::move(tables)) {}

    /// Returns the table of folders. The first caller builds it while others wait.
    const FolderTable& folderTable() const {
        std::call_once(folderTableMade_, [this] { folderTable_.emplace(records); });
        return *folderTable_;
    }

    mutable std::mutex cacheMutex;
    mutable Cache cache;

private:
    mutable std::once_flag folderTableMade_;
    mutable std::optional<FolderTable> folderTable_;
};

/// Converts tracks to records. Reuses its buffers between tracks.
class TrackFiler {
public:
    /// Copies the texts to `tables`. Adds the key if it is new, without positions.
    TrackRecord file(const TrackView& track, LibraryTables& tables);

private:
    std::uint32_t keyNumber(LibraryTables& tables);

    std::string key_;
    std::string title_;
};

} // namespace orvalen
