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

/// Library key to the path of the file that the user chose for it.
using PreferredMatches = TextMap<std::string>;

/// The user's choices among candidates, in "orvalen.sqlite" in the application-support folder. Any thread;
/// each call is whole to the others. Nothing fails towards the caller; what goes wrong is one console line,
/// and a database that could not be opened knows nothing and stores nothing. No statement waits longer
/// than a tenth of a second for another program to let go of the file, and no call longer than two.
class PlaylistDatabaseManager {
public:
    /// Opens the file and creates the tables that are missing.
    PlaylistDatabaseManager(const UserFolders& folders, Console& console);
    ~PlaylistDatabaseManager();
    PlaylistDatabaseManager(const PlaylistDatabaseManager&) = delete;
    PlaylistDatabaseManager& operator=(const PlaylistDatabaseManager&) = delete;

    /// The one instance of the process, made by whoever asks first and never closed.
    static PlaylistDatabaseManager& shared(const UserFolders& folders, Console& console);

    void createTables();
    /// Replaces an earlier path for the key. On the disk when it returns.
    void savePreferredMatch(std::string_view key, std::string_view path);
    /// Forgets the key's path. On the disk when it returns.
    void removePreferredMatch(std::string_view key);
    std::optional<std::string> preferredPath(std::string_view key);
    /// The same without waiting for another program that holds the file.
    std::optional<std::string> preferredPathAtOnce(std::string_view key);
    /// The key's path, which may be none; nullopt, without a console line, when the table cannot be read.
    std::optional<std::optional<std::string>> tryPreferredPath(std::string_view key);
    /// Grows with each of this program's changes before the call that makes it returns.
    std::uint64_t changeCount() const { return changeCount_; }
    /// What can be read of the table just now.
    PreferredMatches allPreferredMatches();
    /// The same, or nothing when it could not be read to its end: for what is to take the table's place
    /// later, where a part would lose the rest.
    std::optional<PreferredMatches> wholePreferredMatches();
    /// The same without a console line.
    std::optional<PreferredMatches> tryPreferredMatches();
    /// Makes the pairs the rows of the table. Rows that equal a pair byte for byte stay; one statement
    /// deletes the others, and each missing pair is then saved on its own. A killed program leaves the old
    /// rows or some of the new ones. On the disk when it returns.
    void replacePreferredMatches(const PreferredMatches& matches);
    /// The rows that replacePreferredMatches(matches) would delete or give another path. Empty, without a
    /// console line, when the table cannot be read just now.
    PreferredMatches rowsReplacedBy(const PreferredMatches& matches);

    /// Writes tracks and preferred matches as one JSON object; a failure is silent.
    void exportLibrarySnapshot(const Location& destination, const LibraryIndex& index);
    /// Writes a snapshot named after the local time into the application-support folder.
    void autoBackupLibrary(const LibraryIndex& index);

private:
    /// Locks the connection for one call and limits how long the call waits for other programs.
    class LockedConnection;
    static int waitForOthers(void* self, int attempts);
    std::optional<std::optional<std::string>> lookUp(std::string_view key, bool writesError);
    /// Whether the table was read to its end.
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
