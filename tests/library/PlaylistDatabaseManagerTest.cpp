#include "library/PlaylistDatabaseManager.h"

#include "core/Files.h"
#include "core/LibraryIndexBuilder.h"
#include "support/Builders.h"
#include "support/OtherProgram.h"
#include "support/TestPlatform.h"

#include <filesystem>
#include <gmock/gmock.h>
#include <thread>

namespace orvalen::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::MatchesRegex;
using testing::Pair;

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
    PlaylistDatabaseManager database(folders, console);
    database.savePreferredMatch("k", "/old");
    database.savePreferredMatch("k", "/p"); // the last choice counts
    OtherProgram other(folder.path("not/there/yet/orvalen.sqlite"));
    EXPECT_EQ(other.ask("SELECT sql FROM sqlite_master WHERE name = 'tracks'"),
              "CREATE TABLE tracks (\n    id INTEGER PRIMARY KEY AUTOINCREMENT,\n    title TEXT,\n"
              "    artist TEXT,\n    genre TEXT,\n    path TEXT,\n    key TEXT UNIQUE\n)");
    EXPECT_EQ(other.ask("SELECT sql FROM sqlite_master WHERE name = 'preferred_matches'"),
              "CREATE TABLE preferred_matches (\n    key TEXT PRIMARY KEY,\n    preferred_path TEXT\n)");
    EXPECT_EQ(other.ask("SELECT sql FROM sqlite_master WHERE name = 'idx_tracks_key'"),
              "CREATE INDEX idx_tracks_key ON tracks(key)");
    EXPECT_EQ(other.ask("SELECT count(*) FROM tracks"), "0");
    EXPECT_EQ(other.ask("SELECT group_concat(key || preferred_path) FROM preferred_matches"), "k/p");
    EXPECT_THAT(console.lines(), IsEmpty());
}

TEST_F(Database, ReplacingWritesOnlyTheRowsThatChangeAndLeavesOneFile) {
    auto database = open();
    const std::string apart = "cafe\u0301";
    database.replacePreferredMatches({{"same", "/s"}, {"gone", "/g"}, {"other path", "/1"}, {apart, "/c"}});
    OtherProgram other(file());
    const auto stampOfSame = [&] {
        return other.ask("SELECT rowid FROM preferred_matches WHERE key = 'same'");
    };
    const std::string before = stampOfSame();
    const PreferredMatches next = {{"same", "/s"},
                                   {"other path", "/2"},
                                   {"café", "/c"},
                                   {"rock n roll", "/O'Brien/'; DROP TABLE preferred_matches; --.mp3"},
                                   {"größe 日本", "/Musik/Große \"Größe\" 🎵.mp3"},
                                   {"", ""}};
    EXPECT_EQ(database.rowsReplacedBy(next),
              (PreferredMatches{{"gone", "/g"}, {"other path", "/1"}, {apart, "/c"}}));
    database.replacePreferredMatches(next);
    EXPECT_EQ(database.allPreferredMatches(), next);
    for (const auto& [key, path] : next)
        EXPECT_EQ(database.preferredPath(key), path) << key;
    EXPECT_EQ(other.ask("SELECT count(*) FROM preferred_matches WHERE key = 'café'"), "1");
    EXPECT_EQ(stampOfSame(), before) << "the row was written again";
    EXPECT_THAT(database.rowsReplacedBy(next), IsEmpty());
    EXPECT_EQ(other.ask("PRAGMA journal_mode"), "delete") << "a copy of the file is complete";
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

TEST_F(Database, WithoutAFolderItIsSilentAndOneThatCannotBeCreatedIsOneLine) {
    PlaylistDatabaseManager without(folders, console);
    without.savePreferredMatch("k", "/p");
    without.autoBackupLibrary({});
    EXPECT_THAT(without.allPreferredMatches(), IsEmpty());
    EXPECT_THAT(console.lines(), IsEmpty());
    folders.folder = folder.write("a file") + "/below";
    PlaylistDatabaseManager database(folders, console);
    database.autoBackupLibrary({});
    EXPECT_THAT(console.lines(),
                ElementsAre("Unable to open database at " + *folders.folder + "/orvalen.sqlite"));
}

TEST_F(Database, AnotherProgramIsWaitedForAMomentAndKeepsTheRowsFromBeingReplaced) {
    auto database = open();
    database.replacePreferredMatches({{"a", "/1"}, {"b", "/2"}});
    OtherProgram other(file());
    other.run("BEGIN EXCLUSIVE");
    std::jthread letsGo([&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        other.run("ROLLBACK");
    });
    database.savePreferredMatch("k", "/p");
    EXPECT_EQ(database.preferredPath("k"), "/p");
    EXPECT_THAT(console.lines(), IsEmpty());
    letsGo.join();

    other.run("BEGIN");
    EXPECT_EQ(other.ask("SELECT count(*) FROM preferred_matches"), "3");
    database.replacePreferredMatches({});
    EXPECT_THAT(console.lines(), ElementsAre("Error clearing preferred matches: database is locked"));
    EXPECT_EQ(database.allPreferredMatches().size(), 3U);
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
    std::jthread worker([&](const std::stop_token& stop) {
        while (!stop.stop_requested())
            EXPECT_EQ(database.allPreferredMatches().size(), 50U);
    });
    for (int i = 0; i < 20; ++i)
        database.replacePreferredMatches(matches);
    worker.request_stop();
    worker.join();
    EXPECT_THAT(console.lines(), IsEmpty());
}

TEST_F(Database, TheBackupIsNamedAfterTheTimeHasATempoForEveryTrackAndTheChoicesAsOneObject) {
    auto database = open();
    database.savePreferredMatch("night band last train home", "/Music/a.mp3");
    database.autoBackupLibrary(buildIndex(std::vector{track("Ünknown", "Intro", {}, "/Music/b.wav")}));
    ASSERT_THAT(console.lines(),
                ElementsAre(MatchesRegex("Auto-saved library backup to .*/library_backup_"
                                         "[0-9]{4}-[0-9]{2}-[0-9]{2}_[0-9]{2}-[0-9]{2}-[0-9]{2}\\.json")));
    const std::string path = console.lines().front().substr(console.lines().front().find('/'));
    EXPECT_EQ(readWholeFile(path).value_or(""), R"({
  "tracks": [
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
}

} // namespace
} // namespace orvalen::test
