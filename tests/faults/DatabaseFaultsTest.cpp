#include "faults/FailingCalls.h"
#include "library/PlaylistDatabaseManager.h"
#include "support/Fakes.h"
#include "support/OtherProgram.h"
#include "support/TemporaryFolder.h"

#include <cerrno>
#include <functional>
#include <gmock/gmock.h>
#include <optional>

namespace orvalen::test {
namespace {

using testing::AnyOf;
using testing::Contains;
using testing::IsEmpty;

const PreferredMatches oldRows{{"a", "/old"}, {"b", "/kept"}};

/// One use of the database.
struct Use {
    const char* name;
    std::function<void(PlaylistDatabaseManager&)> act;
    PreferredMatches after;
};

const Use save{"save",
               [](PlaylistDatabaseManager& database) { database.savePreferredMatch("a", "/new"); },
               {{"a", "/new"}, {"b", "/kept"}}};
const Use replace{"replace",
                  [](PlaylistDatabaseManager& database) {
                      database.replacePreferredMatches({{"b", "/1"}, {"c", "/2"}});
                  },
                  {{"b", "/1"}, {"c", "/2"}}};
const Use read{"read",
               [](PlaylistDatabaseManager& database) {
                   EXPECT_THAT(database.preferredPath("a").value_or("/old"), "/old");
                   for (const auto& row : database.allPreferredMatches())
                       EXPECT_THAT(oldRows, Contains(row));
               },
               oldRows};

/// A database with the old rows, in its own folder.
class DatabaseFile {
public:
    DatabaseFile() {
        folders.folder = folder.path();
        PlaylistDatabaseManager(folders, console).replacePreferredMatches(oldRows);
        EXPECT_THAT(console.lines(), IsEmpty());
    }
    /// Opens the database while the call fails.
    void open(const std::optional<Fault>& fault = {}) {
        const FailingCalls calls({path()}, fault);
        database.emplace(folders, console);
        counts = calls.counts();
    }
    void run(const Use& use, const std::optional<Fault>& fault = {}) {
        const FailingCalls calls({path()}, fault);
        use.act(*database);
        counts = calls.counts();
    }
    std::string path() const { return folder.path("orvalen.sqlite"); }
    PreferredMatches rowsOnDisk() {
        EXPECT_EQ(OtherProgram(path()).ask("PRAGMA integrity_check"), "ok");
        FakeConsole ignored;
        return PlaylistDatabaseManager(folders, ignored).allPreferredMatches();
    }

    TemporaryFolder folder;
    FakeUserFolders folders;
    FakeConsole console;
    std::optional<PlaylistDatabaseManager> database;
    std::vector<int> counts; ///< calls of the last operation
};

/// Replacing is not one transaction: after an error, rows may be missing, each with an error line. No row may
/// be wrong.
void expectOldRowsOrNewOnes(DatabaseFile& file, const Use& use) {
    const auto lines = file.console.lines();
    EXPECT_THAT(lines, testing::Each(testing::MatchesRegex("Error (saving|clearing|preparing).*: .+")));
    const PreferredMatches rows = file.rowsOnDisk();
    if (lines.empty()) {
        EXPECT_EQ(rows, use.after) << "no error line";
    } else if (lines.front().starts_with("Error clearing")) {
        EXPECT_EQ(rows, oldRows);
    } else if (rows != oldRows) {
        for (const auto& row : rows)
            EXPECT_THAT(use.after, Contains(row));
        EXPECT_LE(use.after.size() - rows.size(), lines.size());
    }
}

TEST(DatabaseFaults, LeaveOldRowsOrNewOnesAndTheNextAttemptWorks) {
    for (const Use& use : {save, replace, read}) {
        DatabaseFile whole;
        whole.open();
        whole.run(use);
        const std::vector<Fault> faults = faultsOf(whole.counts, {EIO, ENOSPC});
        EXPECT_FALSE(faults.empty()) << "the calls were not seen";
        for (const Fault& fault : faults) {
            SCOPED_TRACE(use.name + (": " + describe(fault)));
            DatabaseFile file;
            file.open();
            file.run(use, fault);
            expectOldRowsOrNewOnes(file, use);
            file.console.clear();
            file.run(use);
            EXPECT_THAT(file.console.lines(), IsEmpty()) << "the second attempt";
            EXPECT_EQ(file.rowsOnDisk(), use.after);
        }
    }
}

TEST(DatabaseFaults, AtTheOpeningCostNoRowAndAtMostOneLine) {
    DatabaseFile whole;
    whole.open();
    for (const Fault& fault : faultsOf(whole.counts, {EIO, EACCES})) {
        SCOPED_TRACE(describe(fault));
        DatabaseFile file;
        file.open(fault);
        const auto lines = file.console.lines();
        EXPECT_LE(lines.size(), 1U);
        EXPECT_THAT(lines, testing::Each(AnyOf("Unable to open database at " + file.path(),
                                               testing::StartsWith("Error creating tables: "))));
        file.run(replace);
        file.database.reset();
        EXPECT_THAT(file.rowsOnDisk(), AnyOf(oldRows, replace.after));
    }
}

TEST(DatabaseFaults, WithoutWritePermissionItIsStillRead) {
    DatabaseFile file;
    file.open(Fault{Call::open, 0, Fault::Way::error, EACCES});
    EXPECT_EQ(file.database->preferredPath("a"), "/old");
    file.run(save);
    file.run(replace);
    EXPECT_THAT(
        file.console.lines(),
        testing::ElementsAre("Error saving preferred match: attempt to write a readonly database",
                             "Error clearing preferred matches: attempt to write a readonly database"));
    EXPECT_EQ(file.rowsOnDisk(), oldRows);
}

} // namespace
} // namespace orvalen::test
