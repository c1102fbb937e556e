#include "library/PlaylistDatabaseManager.h"

#include "core/Files.h"
#include "library/LibraryDocument.h"
#include "platform/Console.h"
#include "platform/UserFolders.h"

#include <algorithm>
#include <array>
#include <ctime>
#include <filesystem>
#include <memory>
#include <sqlite3.h>
#include <system_error>
#include <thread>
#include <unordered_set>

namespace orvalen {

using namespace std::chrono_literals;

namespace {

constexpr const char* schema = "CREATE TABLE IF NOT EXISTS tracks (\n"
                               "    id INTEGER PRIMARY KEY AUTOINCREMENT,\n"
                               "    title TEXT,\n"
                               "    artist TEXT,\n"
                               "    genre TEXT,\n"
                               "    path TEXT,\n"
                               "    key TEXT UNIQUE\n"
                               ");\n"
                               "CREATE INDEX IF NOT EXISTS idx_tracks_key ON tracks(key);\n"
                               "\n"
                               "CREATE TABLE IF NOT EXISTS preferred_matches (\n"
                               "    key TEXT PRIMARY KEY,\n"
                               "    preferred_path TEXT\n"
                               ");";

struct Finalize {
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};
using Statement = std::unique_ptr<sqlite3_stmt, Finalize>;

/// Returns null if the statement cannot be prepared.
Statement prepare(sqlite3* db, const char* sql) {
    sqlite3_stmt* statement = nullptr;
    sqlite3_prepare_v2(db, sql, -1, &statement, nullptr);
    return Statement(statement);
}

bool execute(sqlite3* db, const char* script) {
    return sqlite3_exec(db, script, nullptr, nullptr, nullptr) == SQLITE_OK;
}

void bindText(const Statement& statement, int parameter, const std::string& text) {
    sqlite3_bind_text(statement.get(), parameter, text.c_str(), -1, SQLITE_STATIC);
}

/// Returns nullopt for NULL and for invalid UTF-8, which only another program can have written. Invalid bytes
/// equal no key or path, and would make a library file unreadable.
std::optional<std::string> columnText(const Statement& statement, int column) {
    const unsigned char* bytes = sqlite3_column_text(statement.get(), column);
    if (bytes == nullptr)
        return std::nullopt;
    std::string text(reinterpret_cast<const char*>(bytes));
    return isValidUtf8(text) ? std::optional(std::move(text)) : std::nullopt;
}

/// SQLite moves the log into the file when the log reaches 4 MB, and the file can grow at that moment.
bool hasRoomForLog(sqlite3* db) {
    std::error_code error;
    const auto space = std::filesystem::space(sqlite3_db_filename(db, "main"), error);
    return error || space.available > 32U << 20;
}

/// Makes many commits fast: while this object exists, commits do not wait for the disk; the destructor waits
/// once for all. Otherwise 2,000 rows would block the window for more than two seconds. Commits stay
/// independent: after a power failure the table is as one of the commits left it, and a killed program loses
/// none.
///
/// Uses SQLite's write-ahead log, and only during these commits. Afterwards one file is the whole database,
/// for other programs, copies, and read-only or network folders. If the log is not available because another
/// program is reading, or the disk is nearly full, each commit waits as usual.
class ManyCommits {
public:
    explicit ManyCommits(sqlite3* db) : db_(db) {
        if (hasRoomForLog(db_))
            execute(db_, "PRAGMA journal_mode=WAL; PRAGMA synchronous=NORMAL;");
    }
    ~ManyCommits() {
        execute(db_, "PRAGMA synchronous=FULL;");
        execute(db_, "PRAGMA journal_mode=DELETE;");
    }
    ManyCommits(const ManyCommits&) = delete;
    ManyCommits& operator=(const ManyCommits&) = delete;

private:
    sqlite3* db_;
};

/// The rows that equal a pair of `matches` byte for byte. While this object exists, SQL statements can call
/// is_kept(key, preferred_path).
class KeptRows {
public:
    KeptRows(sqlite3* db, const PreferredMatches& matches) : db_(db), matches_(matches) {
        define(this, [](sqlite3_context* context, int, sqlite3_value** values) {
            auto& self = *static_cast<KeptRows*>(sqlite3_user_data(context));
            sqlite3_result_int(context, self.keep(text(values[0]), text(values[1])) ? 1 : 0);
        });
    }
    ~KeptRows() { define(nullptr, nullptr); }
    KeptRows(const KeptRows&) = delete;
    KeptRows& operator=(const KeptRows&) = delete;

    /// Returns the pairs for which is_kept() was not called.
    std::vector<const PreferredMatches::value_type*> missing() const {
        std::vector<const PreferredMatches::value_type*> result;
        for (const auto& pair : matches_)
            if (!kept_.contains(&pair))
                result.push_back(&pair);
        return result;
    }

private:
    using Function = void (*)(sqlite3_context*, int, sqlite3_value**);

    void define(KeptRows* self, Function function) {
        sqlite3_create_function_v2(db_, "is_kept", 2, SQLITE_UTF8 | SQLITE_DIRECTONLY, self, function,
                                   nullptr, nullptr, nullptr);
    }
    static std::optional<std::string_view> text(sqlite3_value* value) {
        if (sqlite3_value_type(value) != SQLITE_TEXT)
            return std::nullopt;
        const auto* bytes = reinterpret_cast<const char*>(sqlite3_value_text(value));
        return std::string_view(bytes, static_cast<std::size_t>(sqlite3_value_bytes(value)));
    }
    bool keep(std::optional<std::string_view> key, std::optional<std::string_view> path) {
        if (!key || !path)
            return false;
        const auto pair = matches_.find(*key);
        const bool kept = pair != matches_.end() && pair->first == *key && pair->second == *path;
        if (kept)
            kept_.insert(&*pair);
        return kept;
    }

    sqlite3* db_;
    const PreferredMatches& matches_;
    std::unordered_set<const PreferredMatches::value_type*> kept_;
};

/// Adds the rows that the statement selects (key and path). Returns whether all rows were read.
bool readRows(const Statement& select, PreferredMatches& matches) {
    int outcome = SQLITE_ERROR;
    while (select && (outcome = sqlite3_step(select.get())) == SQLITE_ROW) {
        auto key = columnText(select, 0);
        auto path = columnText(select, 1);
        if (key && path)
            matches.insert_or_assign(std::move(*key), std::move(*path));
    }
    return outcome == SQLITE_DONE;
}

std::string localTimestamp() {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    char text[32];
    const std::size_t length = std::strftime(text, sizeof text, "%Y-%m-%d_%H-%M-%S", &local);
    return {text, length};
}

} // namespace

class PlaylistDatabaseManager::LockedConnection {
public:
    explicit LockedConnection(PlaylistDatabaseManager& manager)
        : manager_(manager), lock_(manager.mutex_), ends_(std::chrono::steady_clock::now() + 2s) {
        restartTimeout();
    }
    /// Grants the next statement another 100 ms to wait for a lock held by another process, up to two seconds
    /// per call.
    void restartTimeout() {
        manager_.timeoutEnds_ = std::min(std::chrono::steady_clock::now() + 100ms, ends_);
    }
    void doNotWait() { manager_.timeoutEnds_ = {}; }

private:
    PlaylistDatabaseManager& manager_;
    std::lock_guard<std::mutex> lock_;
    std::chrono::steady_clock::time_point ends_;
};

PlaylistDatabaseManager::PlaylistDatabaseManager(const UserFolders& folders, Console& console)
    : folders_(folders), console_(console) {
    const auto folder = folders.applicationSupport();
    if (!folder)
        return;
    createFolder(*folder);
    const std::string path = *folder + "/orvalen.sqlite";
    constexpr int flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_FULLMUTEX;
    sqlite3* opened = nullptr;
    if (sqlite3_open_v2(path.c_str(), &opened, flags, nullptr) != SQLITE_OK) {
        console_.line("Unable to open database at " + path);
        sqlite3_close(opened);
        return;
    }
    db_ = opened;
    sqlite3_busy_handler(db_, waitForOthers, this);
    createTables();
}

PlaylistDatabaseManager::~PlaylistDatabaseManager() {
    sqlite3_close(db_);
}

PlaylistDatabaseManager& PlaylistDatabaseManager::shared(const UserFolders& folders, Console& console) {
    static auto* instance = new PlaylistDatabaseManager(folders, console);
    return *instance;
}

int PlaylistDatabaseManager::waitForOthers(void* self, int) {
    if (std::chrono::steady_clock::now() >= static_cast<PlaylistDatabaseManager*>(self)->timeoutEnds_)
        return 0;
    std::this_thread::sleep_for(std::chrono::milliseconds(2));
    return 1;
}

void PlaylistDatabaseManager::writeError(const char* what) {
    console_.line(std::string(what) + ": " + sqlite3_errmsg(db_));
}

void PlaylistDatabaseManager::createTables() {
    if (db_ == nullptr)
        return;
    const LockedConnection connection(*this);
    if (!execute(db_, schema))
        writeError("Error creating tables");
}

void PlaylistDatabaseManager::savePreferredMatch(std::string_view key, std::string_view path) {
    if (db_ == nullptr)
        return;
    LockedConnection connection(*this);
    const PreferredMatches::value_type match{key, path};
    insertMatches(std::array{&match}, connection);
    ++changeCount_;
}

void PlaylistDatabaseManager::insertMatches(std::span<const PreferredMatches::value_type* const> matches,
                                            LockedConnection& connection) {
    Statement statement;
    for (const auto* match : matches) {
        connection.restartTimeout();
        if (!statement)
            statement =
                prepare(db_, "INSERT OR REPLACE INTO preferred_matches (key, preferred_path) VALUES (?, ?);");
        if (!statement) {
            writeError("Error preparing preferred match insert");
            continue;
        }
        bindText(statement, 1, match->first);
        bindText(statement, 2, match->second);
        if (sqlite3_step(statement.get()) != SQLITE_DONE)
            writeError("Error saving preferred match");
        sqlite3_reset(statement.get());
    }
}

void PlaylistDatabaseManager::removePreferredMatch(std::string_view key) {
    if (db_ == nullptr)
        return;
    const LockedConnection connection(*this);
    ++changeCount_;
    const Statement statement = prepare(db_, "DELETE FROM preferred_matches WHERE key = ?;");
    const std::string bound(key);
    bindText(statement, 1, bound);
    if (!statement || sqlite3_step(statement.get()) != SQLITE_DONE)
        writeError("Error removing preferred match");
}

std::optional<std::string> PlaylistDatabaseManager::preferredPath(std::string_view key) {
    if (db_ == nullptr)
        return std::nullopt;
    const LockedConnection connection(*this);
    return lookUp(key, true).value_or(std::nullopt);
}

std::optional<std::string> PlaylistDatabaseManager::preferredPathAtOnce(std::string_view key) {
    if (db_ == nullptr)
        return std::nullopt;
    LockedConnection connection(*this);
    connection.doNotWait();
    return lookUp(key, true).value_or(std::nullopt);
}

std::optional<std::optional<std::string>> PlaylistDatabaseManager::tryPreferredPath(std::string_view key) {
    if (db_ == nullptr)
        return std::nullopt;
    const LockedConnection connection(*this);
    return lookUp(key, false);
}

std::optional<std::optional<std::string>> PlaylistDatabaseManager::lookUp(std::string_view key,
                                                                          bool writesError) {
    const Statement statement =
        prepare(db_, "SELECT preferred_path FROM preferred_matches WHERE key = ? LIMIT 1;");
    if (!statement && writesError)
        writeError("Error preparing preferred match lookup");
    const std::string bound(key);
    bindText(statement, 1, bound);
    switch (statement ? sqlite3_step(statement.get()) : SQLITE_ERROR) {
    case SQLITE_ROW:
        return columnText(statement, 0);
    case SQLITE_DONE:
        return std::optional<std::string>();
    default:
        return std::nullopt;
    }
}

PreferredMatches PlaylistDatabaseManager::allPreferredMatches() {
    PreferredMatches matches;
    readMatches(matches, true);
    return matches;
}

std::optional<PreferredMatches> PlaylistDatabaseManager::wholePreferredMatches() {
    PreferredMatches matches;
    return readMatches(matches, true) ? std::optional(std::move(matches)) : std::nullopt;
}

std::optional<PreferredMatches> PlaylistDatabaseManager::tryPreferredMatches() {
    PreferredMatches matches;
    return readMatches(matches, false) ? std::optional(std::move(matches)) : std::nullopt;
}

bool PlaylistDatabaseManager::readMatches(PreferredMatches& matches, bool writesError) {
    if (db_ == nullptr)
        return false;
    const LockedConnection connection(*this);
    const Statement statement = prepare(db_, "SELECT key, preferred_path FROM preferred_matches;");
    if (!statement && writesError)
        writeError("Error preparing select all preferred matches");
    return readRows(statement, matches);
}

void PlaylistDatabaseManager::replacePreferredMatches(const PreferredMatches& matches) {
    if (db_ == nullptr)
        return;
    LockedConnection connection(*this);
    KeptRows kept(db_, matches);
    if (!execute(db_, "DELETE FROM preferred_matches WHERE NOT is_kept(key, preferred_path);"))
        return writeError("Error clearing preferred matches");
    ++changeCount_;
    if (const auto missing = kept.missing(); !missing.empty()) {
        const ManyCommits commits(db_);
        insertMatches(missing, connection);
    }
}

PreferredMatches PlaylistDatabaseManager::rowsReplacedBy(const PreferredMatches& matches) {
    PreferredMatches replaced;
    if (db_ == nullptr)
        return replaced;
    const LockedConnection connection(*this);
    const KeptRows kept(db_, matches);
    const Statement statement = prepare(
        db_, "SELECT key, preferred_path FROM preferred_matches WHERE NOT is_kept(key, preferred_path);");
    readRows(statement, replaced);
    return replaced;
}

void PlaylistDatabaseManager::exportLibrarySnapshot(const Location& destination, const LibraryIndex& index) {
    // A failed backup must not look like a failed scan.
    writeLibrarySnapshot(index, allPreferredMatches(), [&](std::string_view text) {
        static_cast<void>(writeWholeFile(destination.path, text));
    });
}

void PlaylistDatabaseManager::autoBackupLibrary(const LibraryIndex& index) {
    const std::string timestamp = localTimestamp();
    const auto folder = folders_.applicationSupport();
    if (!folder || !createFolder(*folder))
        return;
    const Location file{*folder + "/library_backup_" + timestamp + ".json"};
    exportLibrarySnapshot(file, index);
    console_.line("Auto-saved library backup to " + file.path);
}

} // namespace orvalen
