#include "library/PlaylistDatabaseManager.h"

#include "core/Files.h"
#include "library/LibrarySnapshot.h"
#include "platform/Console.h"
#include "platform/UserFolders.h"

#include <ctime>
#include <memory>
#include <sqlite3.h>

namespace orvalen {
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

/// Null when the statement cannot be prepared.
Statement prepare(sqlite3* db, const char* sql) {
    sqlite3_stmt* statement = nullptr;
    sqlite3_prepare_v2(db, sql, -1, &statement, nullptr);
    return Statement(statement);
}

void bindText(const Statement& statement, int parameter, const std::string& text) {
    sqlite3_bind_text(statement.get(), parameter, text.c_str(), -1, SQLITE_TRANSIENT);
}

/// Nothing for NULL, which only another program can have written.
std::optional<std::string> columnText(const Statement& statement, int column) {
    const unsigned char* text = sqlite3_column_text(statement.get(), column);
    if (text == nullptr)
        return std::nullopt;
    return std::string(reinterpret_cast<const char*>(text));
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

PlaylistDatabaseManager::PlaylistDatabaseManager(const UserFolders& folders, Console& console)
    : folders_(folders), console_(console) {
    const auto folder = folders.applicationSupport();
    if (!folder)
        return;
    createFolder(*folder);
    const std::string path = *folder + "/orvalen.sqlite";
    sqlite3* opened = nullptr;
    if (sqlite3_open(path.c_str(), &opened) != SQLITE_OK) {
        console_.line("Unable to open database at " + path);
        sqlite3_close(opened);
        return;
    }
    db_ = opened;
    createTables();
}

PlaylistDatabaseManager::~PlaylistDatabaseManager() {
    sqlite3_close(db_);
}

PlaylistDatabaseManager& PlaylistDatabaseManager::shared(const UserFolders& folders, Console& console) {
    static auto* instance = new PlaylistDatabaseManager(folders, console);
    return *instance;
}

void PlaylistDatabaseManager::createTables() {
    if (db_ != nullptr && sqlite3_exec(db_, schema, nullptr, nullptr, nullptr) != SQLITE_OK)
        console_.line(std::string("Error creating tables: ") + sqlite3_errmsg(db_));
}

void PlaylistDatabaseManager::savePreferredMatch(std::string_view key, std::string_view path) {
    if (db_ == nullptr)
        return;
    const Statement statement =
        prepare(db_, "INSERT OR REPLACE INTO preferred_matches (key, preferred_path) VALUES (?, ?);");
    if (!statement) {
        console_.line(std::string("Error preparing preferred match insert: ") + sqlite3_errmsg(db_));
        return;
    }
    bindText(statement, 1, std::string(key));
    bindText(statement, 2, std::string(path));
    if (sqlite3_step(statement.get()) != SQLITE_DONE)
        console_.line(std::string("Error saving preferred match: ") + sqlite3_errmsg(db_));
}

std::optional<std::string> PlaylistDatabaseManager::preferredPath(std::string_view key) {
    if (db_ == nullptr)
        return std::nullopt;
    const Statement statement =
        prepare(db_, "SELECT preferred_path FROM preferred_matches WHERE key = ? LIMIT 1;");
    if (!statement) {
        console_.line(std::string("Error preparing preferred match lookup: ") + sqlite3_errmsg(db_));
        return std::nullopt;
    }
    bindText(statement, 1, std::string(key));
    return sqlite3_step(statement.get()) == SQLITE_ROW ? columnText(statement, 0) : std::nullopt;
}

PreferredMatches PlaylistDatabaseManager::allPreferredMatches() {
    PreferredMatches matches;
    if (db_ == nullptr)
        return matches;
    const Statement statement = prepare(db_, "SELECT key, preferred_path FROM preferred_matches;");
    if (!statement) {
        console_.line(std::string("Error preparing select all preferred matches: ") + sqlite3_errmsg(db_));
        return matches;
    }
    while (sqlite3_step(statement.get()) == SQLITE_ROW) {
        auto key = columnText(statement, 0);
        auto path = columnText(statement, 1);
        if (key && path)
            matches.insert_or_assign(std::move(*key), std::move(*path));
    }
    return matches;
}

void PlaylistDatabaseManager::replacePreferredMatches(const PreferredMatches& matches) {
    if (db_ == nullptr)
        return;
    if (sqlite3_exec(db_, "DELETE FROM preferred_matches;", nullptr, nullptr, nullptr) != SQLITE_OK) {
        console_.line(std::string("Error clearing preferred matches: ") + sqlite3_errmsg(db_));
        return;
    }
    for (const auto& [key, path] : matches)
        savePreferredMatch(key, path);
}

void PlaylistDatabaseManager::exportLibrarySnapshot(const Location& destination, const LibraryIndex& index) {
    // A backup is written beside the scan's real work; a full disk must not turn its end into an error.
    static_cast<void>(writeWholeFile(destination.path, librarySnapshotText(index, allPreferredMatches())));
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
