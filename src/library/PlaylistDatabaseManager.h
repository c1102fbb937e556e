#pragma once

#include "core/LibraryIndex.h"
#include "core/Location.h"
#include "core/Text.h"

#include <atomic>
#include <chrono>
#include <cstdint>
#include <mutex>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

struct sqlite3;

namespace orvalen {

class Console;
class UserFolders;

/// Library keys and the path of the preferred match for each.
using PreferredMatches = TextMap<std::string>;

/// The preferred matches, stored in "orvalen.sqlite" in the application-support folder. Thread-safe; calls
/// are serialised. Errors are written to the console and never returned. If the database could not be opened,
/// it is empty and stores nothing. A statement waits at most 100 ms for a lock held by another process, a
/// call at most two seconds.
class PlaylistDatabaseManager {
public:
    /// Opens the database and creates missing tables.
    PlaylistDatabaseManager(const UserFolders& folders, Console& console);
    ~PlaylistDatabaseManager();
    PlaylistDatabaseManager(const PlaylistDatabaseManager&) = delete;
    PlaylistDatabaseManager& operator=(const PlaylistDatabaseManager&) = delete;

    /// Returns the instance of the process. The first call creates it; it is never closed.
    static PlaylistDatabaseManager& shared(const UserFolders& folders, Console& console);

    void createTables();
    /// Stores the path for the key, replacing an earlier one. It is on the disk when the call returns.
    void savePreferredMatch(std::string_view key, std::string_view path);
    /// Removes the key's path. The removal is on the disk when the call returns.
    void removePreferredMatch(std::string_view key);
    /// Returns the path for the key, or nullopt.
    std::optional<std::string> preferredPath(std::string_view key);
    /// Returns preferredPath() without waiting for a lock held by another process.
    std::optional<std::string> preferredPathAtOnce(std::string_view key);
    /// Returns the path for the key, or an empty optional inside if it has none. Returns nullopt, without an
    /// error line, if the table cannot be read.
    std::optional<std::optional<std::string>> tryPreferredPath(std::string_view key);
    /// Returns a number that grows with each change by this process, before the changing call returns.
    std::uint64_t changeCount() const { return changeCount_; }
    /// Returns the rows that can be read now.
    PreferredMatches allPreferredMatches();
    /// Returns all rows, or nullopt if reading failed midway. Use it if the result will replace the table
    /// later.
    std::optional<PreferredMatches> wholePreferredMatches();
    /// Returns wholePreferredMatches() without writing an error line.
    std::optional<PreferredMatches> tryPreferredMatches();
    /// Makes `matches` the content of the table. Rows that equal a pair byte for byte stay; one statement
    /// deletes the others, and each missing pair is saved on its own. If the program is killed meanwhile, the
    /// table has the old rows or some of the new ones. The rows are on the disk when the call returns.
    void replacePreferredMatches(const PreferredMatches& matches);
    /// Returns the rows that replacePreferredMatches(matches) would delete or change. Empty, without an error
    /// line, if the table cannot be read now.
    PreferredMatches rowsReplacedBy(const PreferredMatches& matches);

    /// Writes tracks and preferred matches as one JSON object. Ignores errors.
    void exportLibrarySnapshot(const Location& destination, const LibraryIndex& index);
    /// Writes a snapshot into the application-support folder. The file name contains the local time.
    void autoBackupLibrary(const LibraryIndex& index);

private:
    /// Locks the connection for one call and limits how long the call waits for other processes.
    class LockedConnection;
    static int waitForOthers(void* self, int attempts);
    std::optional<std::optional<std::string>> lookUp(std::string_view key, bool writesError);
    /// Returns whether the whole table was read.
    bool readMatches(PreferredMatches& matches, bool writesError);
    void insertMatches(std::span<const PreferredMatches::value_type* const> matches,
                       LockedConnection& connection);
    void writeError(const char* what);

    const UserFolders& folders_;
    Console& console_;
    sqlite3* db_ = nullptr;
    std::mutex mutex_;
    std::atomic<std::uint64_t> changeCount_ = 0;
    std::chrono::steady_clock::time_point timeoutEnds_;
};

} // namespace orvalen
