#include "faults/FailingCalls.h"
#include "library/PlaylistDatabaseManager.h"
#include "support/Fakes.h"
#include "support/OtherProgram.h"
#include "support/TemporaryFolder.h"

#include <cerrno>
#include <gmock/gmock.h>
#include <optional>

namespace orvalen::test {
namespace {

using testing::Contains;
using testing::IsEmpty;

const PreferredMatches oldRows{{"a", "/old"}, {"b", "/kept"}};

/// One use of the database.
struct Use {
    const char* name;
    void (*act)(PlaylistDatabaseManager&);
    PreferredMatches after;
};

const Use uses[] = {
    {"save",
     [](auto& database) { database.savePreferredMatch("a", "/new"); },
     {{"a", "/new"}, {"b", "/kept"}}},
    {"replace",
     [](auto& database) {
         database.replacePreferredMatches({{"b", "/1"}, {"c", "/2"}});
     },
     {{"b", "/1"}, {"c", "/2"}}},
    {"read",
     [](auto& database) {
         EXPECT_EQ(database.preferredPath("a").value_or("/old"), "/old");
         for (const auto& row : database.allPreferredMatches())
             EXPECT_THAT(oldRows, Contains(row));
     },
     oldRows},
};

/// A database with the old rows, in its own folder.
struct DatabaseFile {
    DatabaseFile() {
        folders.folder = folder.path();
        PlaylistDatabaseManager(folders, console).replacePreferredMatches(oldRows);
        EXPECT_THAT(console.lines(), IsEmpty());
    }
    /// Opens and uses the database while the call fails. Returns the calls.
    std::vector<std::string_view> openAndAct(const Use& use, const Fault& fault) {
        const FailingCalls failing({path}, fault);
        database.emplace(folders, console);
        use.act(*database);
        return failing.calls();
    }
    PreferredMatches rowsOnDisk() {
        EXPECT_EQ(OtherProgram(path).ask("PRAGMA integrity_check"), "ok");
        FakeConsole ignored;
        return PlaylistDatabaseManager(folders, ignored).allPreferredMatches();
    }

    TemporaryFolder folder;
    std::string path = folder.path("orvalen.sqlite");
    FakeUserFolders folders;
    FakeConsole console;
    std::optional<PlaylistDatabaseManager> database;
};

/// Replacing is not one transaction: after an error, rows may be missing, each with an error line. No row may
/// be wrong.
TEST(DatabaseFaults, LeaveOldRowsOrNewOnesAndTheNextAttemptWorks) {
    for (const Use& use : uses)
        for (const Fault& fault : faultsOf(DatabaseFile().openAndAct(use, {}))) {
            SCOPED_TRACE(testing::Message() << use.name << ", " << fault);
            DatabaseFile file;
            file.openAndAct(use, fault);
            const auto lines = file.console.lines();
            EXPECT_THAT(lines, testing::Each(testing::MatchesRegex(
                                   "Error (creating|saving|clearing|preparing).*: .+|Unable to open.+")));
            const PreferredMatches rows = file.rowsOnDisk();
            if (lines.empty()) {
                EXPECT_EQ(rows, use.after) << "no error line";
            } else if (rows != oldRows) {
                EXPECT_LE(use.after.size() - rows.size(), lines.size());
                for (const auto& row : rows)
                    EXPECT_THAT(use.after, Contains(row));
            }

            const bool isClosed = !lines.empty() && lines.front().starts_with("Unable to open");
            if (isClosed || fault.call == "open") // an "open" that fails may leave a read-only connection
                file.database.emplace(file.folders, file.console);
            file.console.clear();
            use.act(*file.database);
            EXPECT_THAT(file.console.lines(), IsEmpty()) << "the second attempt";
            EXPECT_EQ(file.rowsOnDisk(), use.after);
        }
}

} // namespace
} // namespace orvalen::test
