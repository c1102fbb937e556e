#include "library/PlaylistDatabaseManager.h"

#include "support/Builders.h"
#include "support/TestPlatform.h"

#include <atomic>
#include <filesystem>
#include <gmock/gmock.h>
#include <sqlite3.h>
#include <thread>

namespace orvalen::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using testing::StartsWith;
using testing::UnorderedElementsAre;

/// Another program at the same file.
class OtherProgram {
public:
    explicit OtherProgram(const std::string& path) { EXPECT_EQ(sqlite3_open(path.c_str(), &db_), SQLITE_OK); }
    ~OtherProgram() { sqlite3_close(db_); }
    OtherProgram(const OtherProgram&) = delete;
    OtherProgram& operator=(const OtherProgram&) = delete;

    void run(const char* script) {
        EXPECT_EQ(sqlite3_exec(db_, script, nullptr, nullptr, nullptr), SQLITE_OK)
            << script << ": " << sqlite3_errmsg(db_);
    }
    /// The first column of the first row.
    std::string ask(const char* query) {
        sqlite3_stmt* statement = nullptr;
        EXPECT_EQ(sqlite3_prepare_v2(db_, query, -1, &statement, nullptr), SQLITE_OK) << sqlite3_errmsg(db_);
        EXPECT_EQ(sqlite3_step(statement), SQLITE_ROW) << query;
        const unsigned char* text = sqlite3_column_text(statement, 0);
        std::string answer = text == nullptr ? "NULL" : reinterpret_cast<const char*>(text);
        sqlite3_finalize(statement);
        return answer;
    }

private:
    sqlite3* db_ = nullptr;
};

class Database : public testing::Test {
protected:
    std::string file() const { return folder.path("orvalen.sqlite"); }
    PlaylistDatabaseManager open() {
        folders.folder = folder.path();
        return {folders, console};
    }

    TemporaryFolder folder;
    FakeUserFolders folders;
    FakeConsole console;
};

TEST_F(Database, HasTheTablesThatOtherProgramsRead) {
    folders.folder = folder.path("not/there/yet");
    PlaylistDatabaseManager(folders, console).savePreferredMatch("k", "/p");
    OtherProgram other(folder.path("not/there/yet/orvalen.sqlite"));
    EXPECT_EQ(other.ask("SELECT sql FROM sqlite_master WHERE name = 'tracks'"),
              "CREATE TABLE tracks (\n    id INTEGER PRIMARY KEY AUTOINCREMENT,\n    title TEXT,\n"
              "    artist TEXT,\n    genre TEXT,\n    path TEXT,\n    key TEXT UNIQUE\n)");
    EXPECT_EQ(other.ask("SELECT sql FROM sqlite_master WHERE name = 'preferred_matches'"),
              "CREATE TABLE preferred_matches (\n    key TEXT PRIMARY KEY,\n    preferred_path TEXT\n)");
    EXPECT_EQ(other.ask("SELECT sql FROM sqlite_master WHERE name = 'idx_tracks_key'"),
              "CREATE INDEX idx_tracks_key ON tracks(key)");
    EXPECT_EQ(other.ask("SELECT count(*) FROM tracks"), "0");
    EXPECT_EQ(other.ask("SELECT key || preferred_path FROM preferred_matches"), "k/p");
    EXPECT_THAT(console.lines(), IsEmpty());
}

TEST_F(Database, RemembersTheLastChoiceForAKeyAcrossRuns) {
    {
        auto database = open();
        database.savePreferredMatch("night band last train home", "/a.mp3");
        database.savePreferredMatch("night band last train home", "/b.mp3");
        EXPECT_EQ(database.preferredPath("night band last train home"), "/b.mp3");
    }
    auto database = open();
    EXPECT_THAT(database.allPreferredMatches(), ElementsAre(Pair("night band last train home", "/b.mp3")));
    EXPECT_EQ(database.preferredPath("night band"), std::nullopt);
    EXPECT_THAT(console.lines(), IsEmpty());
}

TEST_F(Database, TextsGoInAndComeOutUnchanged) {
    auto database = open();
    const PreferredMatches texts = {{"rock n roll", "/O'Brien/'; DROP TABLE preferred_matches; --.mp3"},
                                    {"größe 日本", "/Musik/Große \"Größe\" 🎵.mp3"},
                                    {"", "/Unknown.mp3"},
                                    {"no path", ""}};
    database.replacePreferredMatches(texts);
    EXPECT_EQ(database.allPreferredMatches(), texts);
    for (const auto& [key, path] : texts)
        EXPECT_EQ(database.preferredPath(key), path) << key;
}

TEST_F(Database, ReplacingLeavesExactlyTheNewRowsAndOneFile) {
    auto database = open();
    database.savePreferredMatch("old", "/o.mp3");
    database.replacePreferredMatches({{"a", "/1"}, {"b", "/2"}});
    EXPECT_THAT(database.allPreferredMatches(), UnorderedElementsAre(Pair("a", "/1"), Pair("b", "/2")));
    database.replacePreferredMatches({});
    EXPECT_THAT(database.allPreferredMatches(), IsEmpty());
    EXPECT_EQ(OtherProgram(file()).ask("PRAGMA journal_mode"), "delete") << "a copy of the file is complete";
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path()), {}), 1);
    EXPECT_THAT(console.lines(), IsEmpty());
}

TEST_F(Database, RowsThatOnlyAnotherProgramCanHaveWrittenAreNotSeen) {
    auto database = open();
    database.savePreferredMatch("good", "/g.mp3");
    OtherProgram(file()).run("INSERT INTO preferred_matches VALUES (NULL, '/n'), ('null', NULL),"
                             "('bad path', CAST(X'2FFF' AS TEXT)), (CAST(X'FF' AS TEXT), '/k')");
    EXPECT_THAT(database.allPreferredMatches(), ElementsAre(Pair("good", "/g.mp3")));
    EXPECT_EQ(database.preferredPath("null"), std::nullopt);
    EXPECT_EQ(database.preferredPath("bad path"), std::nullopt);
}

TEST_F(Database, AFileThatCannotBeOpenedKnowsNothingAndSaysSoOnce) {
    std::filesystem::create_directory(file());
    auto database = open();
    database.createTables();
    database.savePreferredMatch("k", "/p");
    database.replacePreferredMatches({{"k", "/p"}});
    EXPECT_EQ(database.preferredPath("k"), std::nullopt);
    EXPECT_THAT(database.allPreferredMatches(), IsEmpty());
    EXPECT_THAT(console.lines(), ElementsAre("Unable to open database at " + file()));
}

TEST_F(Database, WithoutAnApplicationSupportFolderItIsSilent) {
    PlaylistDatabaseManager database(folders, console);
    database.savePreferredMatch("k", "/p");
    database.autoBackupLibrary({});
    EXPECT_THAT(database.allPreferredMatches(), IsEmpty());
    EXPECT_THAT(console.lines(), IsEmpty());
}

TEST_F(Database, AFolderThatCannotBeCreatedIsOneLine) {
    folders.folder = folder.write("a file") + "/below";
    PlaylistDatabaseManager database(folders, console);
    database.autoBackupLibrary({});
    EXPECT_THAT(console.lines(),
                ElementsAre("Unable to open database at " + *folders.folder + "/orvalen.sqlite"));
}

TEST_F(Database, EachFailureIsItsLine) {
    folder.write("orvalen.sqlite",
                 "This is no database but it is long enough to be asked: " + std::string(200, '.'));
    auto database = open();
    database.savePreferredMatch("k", "/p");
    EXPECT_EQ(database.preferredPath("k"), std::nullopt);
    EXPECT_THAT(database.allPreferredMatches(), IsEmpty());
    database.replacePreferredMatches({{"k", "/p"}});
    EXPECT_THAT(console.lines(),
                ElementsAre("Error creating tables: file is not a database",
                            "Error preparing preferred match insert: file is not a database",
                            "Error preparing preferred match lookup: file is not a database",
                            "Error preparing select all preferred matches: file is not a database",
                            "Error clearing preferred matches: file is not a database"));
}

TEST_F(Database, AFailedInsertIsReportedAndTheOthersGoOn) {
    auto database = open();
    OtherProgram(file()).run("CREATE TRIGGER no BEFORE INSERT ON preferred_matches WHEN NEW.key = 'bad' "
                             "BEGIN SELECT RAISE(ABORT, 'refused'); END");
    database.replacePreferredMatches({{"a", "/1"}, {"bad", "/2"}, {"c", "/3"}});
    EXPECT_THAT(console.lines(), ElementsAre("Error saving preferred match: refused"));
    EXPECT_THAT(database.allPreferredMatches(), UnorderedElementsAre(Pair("a", "/1"), Pair("c", "/3")));
}

TEST_F(Database, WhileAnotherProgramWritesOldRowsStayAndNoCallWaitsLong) {
    auto database = open();
    database.savePreferredMatch("old", "/o.mp3");
    OtherProgram other(file());
    other.run("BEGIN IMMEDIATE");
    const auto start = std::chrono::steady_clock::now();
    PreferredMatches many;
    for (int i = 0; i < 1000; ++i)
        many.emplace(std::to_string(i), "/p");
    database.replacePreferredMatches(many);
    database.savePreferredMatch("new", "/n.mp3");
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(2));
    EXPECT_THAT(database.allPreferredMatches(), ElementsAre(Pair("old", "/o.mp3"))) << "reading goes on";
    EXPECT_THAT(console.lines(), ElementsAre("Error clearing preferred matches: database is locked",
                                             "Error saving preferred match: database is locked"));
    other.run("ROLLBACK");
    database.replacePreferredMatches({{"a", "/1"}});
    EXPECT_THAT(database.allPreferredMatches(), ElementsAre(Pair("a", "/1")));
}

TEST_F(Database, AProgramThatReadsAMomentIsWaitedFor) {
    auto database = open();
    OtherProgram other(file());
    other.run("BEGIN EXCLUSIVE");
    std::jthread letsGo([&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        other.run("ROLLBACK");
    });
    database.savePreferredMatch("k", "/p");
    EXPECT_EQ(database.preferredPath("k"), "/p");
    EXPECT_THAT(console.lines(), IsEmpty());
}

TEST_F(Database, AnotherProgramsReadingKeepsTheRowsFromBeingReplacedUntilItEnds) {
    auto database = open();
    database.replacePreferredMatches({{"a", "/1"}, {"b", "/2"}});
    OtherProgram other(file());
    other.run("BEGIN");
    EXPECT_EQ(other.ask("SELECT count(*) FROM preferred_matches"), "2");
    database.replacePreferredMatches({});
    EXPECT_THAT(console.lines(), ElementsAre("Error clearing preferred matches: database is locked"));
    EXPECT_EQ(database.allPreferredMatches().size(), 2U);
    other.run("COMMIT");
    database.replacePreferredMatches({{"c", "/3"}});
    EXPECT_THAT(database.allPreferredMatches(), ElementsAre(Pair("c", "/3")));
}

TEST_F(Database, AnotherThreadNeverSeesATableHalfReplaced) {
    auto database = open();
    PreferredMatches matches;
    for (int i = 0; i < 50; ++i)
        matches.emplace(std::to_string(i), "/p");
    database.replacePreferredMatches(matches);
    std::atomic<bool> done = false;
    std::jthread worker([&] {
        while (!done) {
            EXPECT_EQ(database.preferredPath("49"), "/p");
            EXPECT_EQ(database.allPreferredMatches().size(), 50U);
        }
    });
    for (int i = 0; i < 20; ++i)
        database.replacePreferredMatches(matches);
    done = true;
    worker.join();
    EXPECT_THAT(console.lines(), IsEmpty());
}

TEST_F(Database, TheSnapshotHasATempoForEveryTrackAndTheChoicesAsOneObject) {
    auto database = open();
    database.savePreferredMatch("night band last train home", "/Music/a.mp3");
    const std::vector<Track> tracks = {track("Night Band", "Last Train Home", 128, "/Music/a.mp3"),
                                       track("Ünknown", "Intro", {}, "/Music/b.wav")};
    database.exportLibrarySnapshot({folder.path("snapshot.json")}, buildIndex(tracks));
    EXPECT_EQ(folder.read("snapshot.json"), R"({
  "tracks": [
    {
      "title": "Last Train Home",
      "artist": "Night Band",
      "genre": "",
      "path": "/Music/a.mp3",
      "bpm": 128
    },
    {
      "title": "Intro",
      "artist": "Ünknown",
      "genre": "",
      "path": "/Music/b.wav",
      "bpm": 0
    }
  ],
  "preferred": {
    "night band last train home": "/Music/a.mp3"
  }
})");
    database.exportLibrarySnapshot({folder.path("missing/snapshot.json")}, {});
    database.exportLibrarySnapshot({"/dev/full"}, {});
    EXPECT_THAT(console.lines(), IsEmpty());
}

TEST_F(Database, TheBackupIsNamedAfterTheLocalTimeAndTold) {
    auto database = open();
    const std::time_t before = std::time(nullptr);
    database.autoBackupLibrary({});
    const std::time_t after = std::time(nullptr);
    ASSERT_EQ(console.lines().size(), 1U);
    const std::string line = console.lines().front();
    std::vector<std::string> expected; // the clock may have turned meanwhile
    for (const std::time_t moment : {before, after}) {
        std::tm local{};
        ::localtime_r(&moment, &local);
        char name[64];
        std::snprintf(name, sizeof name, "library_backup_%04d-%02d-%02d_%02d-%02d-%02d.json",
                      local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour, local.tm_min,
                      local.tm_sec);
        expected.push_back("Auto-saved library backup to " + folder.path(name));
    }
    EXPECT_THAT(expected, testing::Contains(line));
    EXPECT_TRUE(std::filesystem::exists(line.substr(std::string("Auto-saved library backup to ").size())));
}

TEST_F(Database, ABackupThatCannotBeWrittenIsToldAllTheSame) {
    folders.folder = "/proc"; // a folder in which nothing can be created, whoever asks
    PlaylistDatabaseManager database(folders, console);
    database.autoBackupLibrary({});
    EXPECT_THAT(console.lines(),
                ElementsAre("Unable to open database at /proc/orvalen.sqlite",
                            StartsWith("Auto-saved library backup to /proc/library_backup_")));
}

} // namespace
} // namespace orvalen::test
