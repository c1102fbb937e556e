#include "faults/FailingCalls.h"
#include "library/PlaylistDatabaseManager.h"
#include "support/Fakes.h"
#include "support/OtherProgram.h"
#include "support/TemporaryFolder.h"

#include <algorithm>
#include <cerrno>
#include <gmock/gmock.h>
#include <memory>

namespace orvalen::test {
namespace {

const PreferredMatches oldRows{{"a", "/old"}, {"b", "/kept"}};

/// One use of the database.
struct Use {
    const char* name;
    std::function<void(PlaylistDatabaseManager&)> act;
    PreferredMatches after;
};

const Use uses[] = {
    {"save",
     [](PlaylistDatabaseManager& database) { database.savePreferredMatch("a", "/new"); },
     {{"a", "/new"}, {"b", "/kept"}}},
    {"replace",
     [](PlaylistDatabaseManager& database) {
         database.replacePreferredMatches({{"b", "/1"}, {"c", "/2"}});
     },
     {{"b", "/1"}, {"c", "/2"}}},
    {"lookUp",
     [](PlaylistDatabaseManager& database) {
         EXPECT_THAT(database.preferredPath("a").value_or("/old"), "/old");
     },
     oldRows},
    {"readAll",
     [](PlaylistDatabaseManager& database) {
         for (const auto& row : database.allPreferredMatches())
             EXPECT_THAT(oldRows, testing::Contains(row));
     },
     oldRows},
};

/// A database with the old rows, in a folder of its own.
class DatabaseFile {
public:
    DatabaseFile() {
        folders.folder = folder.path();
        PlaylistDatabaseManager(folders, console).replacePreferredMatches(oldRows);
        EXPECT_THAT(console.lines(), testing::IsEmpty());
    }
    std::string path() const { return folder.path("orvalen.sqlite"); }
    void open() { database = std::make_unique<PlaylistDatabaseManager>(folders, console); }

    PreferredMatches rowsOnDisk() {
        EXPECT_EQ(OtherProgram(path()).ask("PRAGMA integrity_check"), "ok");
        return PlaylistDatabaseManager(folders, ignored).allPreferredMatches();
    }

    TemporaryFolder folder;
    FakeUserFolders folders;
    FakeConsole console;
    FakeConsole ignored;
    std::unique_ptr<PlaylistDatabaseManager> database;
};

/// Replacing has no transaction: rows may be missing after an error, each with an error line, but none is
/// wrong.
void expectOldRowsOrNewOnes(DatabaseFile& file, const Use& use) {
    const auto lines = file.console.lines();
    const PreferredMatches rows = file.rowsOnDisk();
    if (lines.empty()) {
        EXPECT_EQ(rows, use.after) << "no error line";
    } else if (lines.front().starts_with("Error clearing")) {
        EXPECT_EQ(rows, oldRows);
    } else if (rows != oldRows) {
        for (const auto& row : rows)
            EXPECT_THAT(use.after, testing::Contains(row));
        EXPECT_LE(use.after.size() - rows.size(), lines.size());
    }
}

class DatabaseFaults : public testing::TestWithParam<Use> {};

TEST_P(DatabaseFaults, LeaveOldRowsOrNewOnesAndTheNextAttemptWorks) {
    std::vector<int> counts;
    {
        DatabaseFile file;
        file.open();
        const FailingCalls calls({file.path()});
        GetParam().act(*file.database);
        counts = calls.counts();
    }
    const std::vector<Fault> faults = faultsOf(counts, {EIO, ENOSPC});
    EXPECT_FALSE(faults.empty()) << "the calls were not seen";
    for (const Fault& fault : faults) {
        SCOPED_TRACE(describe(fault));
        DatabaseFile file;
        file.open();
        {
            const FailingCalls calls({file.path()}, fault);
            GetParam().act(*file.database);
        }
        for (const std::string& line : file.console.lines())
            EXPECT_THAT(line, testing::MatchesRegex("Error (saving|clearing|preparing).*: .+"));
        expectOldRowsOrNewOnes(file, GetParam());

        file.console.clear();
        GetParam().act(*file.database);
        EXPECT_THAT(file.console.lines(), testing::IsEmpty()) << "the second attempt";
        EXPECT_EQ(file.rowsOnDisk(), GetParam().after);
    }
}

INSTANTIATE_TEST_SUITE_P(Uses, DatabaseFaults, testing::ValuesIn(uses),
                         [](const auto& each) { return std::string(each.param.name); });

TEST(DatabaseOpening, ThatFailsCostsNoRowAndAtMostOneLine) {
    std::vector<int> counts;
    {
        DatabaseFile file;
        const FailingCalls calls({file.path()});
        file.open();
        counts = calls.counts();
    }
    for (const Fault& fault : faultsOf(counts, {EIO, EACCES})) {
        SCOPED_TRACE(describe(fault));
        DatabaseFile file;
        {
            const FailingCalls calls({file.path()}, fault);
            file.open();
        }
        const auto lines = file.console.lines();
        ASSERT_LE(lines.size(), 1U);
        if (!lines.empty()) {
            EXPECT_THAT(lines.front(), testing::AnyOf("Unable to open database at " + file.path(),
                                                      testing::StartsWith("Error creating tables: ")));
        }
        for (const Use& use : uses)
            if (use.name != std::string("lookUp") && use.name != std::string("readAll"))
                use.act(*file.database);
        file.database.reset();
        EXPECT_THAT(file.rowsOnDisk(), testing::AnyOf(oldRows, uses[1].after));
    }
}

TEST(DatabaseOpening, WithoutWritePermissionStillReads) {
    DatabaseFile file;
    {
        const FailingCalls calls({file.path()}, Fault{Call::open, 0, Fault::Way::error, EACCES});
        file.open();
    }
    EXPECT_EQ(file.database->preferredPath("a"), "/old");
    uses[0].act(*file.database);
    uses[1].act(*file.database);
    EXPECT_THAT(
        file.console.lines(),
        testing::ElementsAre("Error saving preferred match: attempt to write a readonly database",
                             "Error clearing preferred matches: attempt to write a readonly database"));
    EXPECT_EQ(file.rowsOnDisk(), oldRows);
}

} // namespace
} // namespace orvalen::test
