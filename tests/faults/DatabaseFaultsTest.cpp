#include "faults/FaultReport.h"
#include "library/PlaylistDatabaseManager.h"
#include "support/Fakes.h"
#include "support/OtherProgram.h"
#include "support/TemporaryFolder.h"

#include <cerrno>
#include <filesystem>
#include <gmock/gmock.h>
#include <memory>
#include <sys/stat.h>

namespace orvalen::test {
namespace {

const PreferredMatches oldRows{{"a", "/old"}, {"b", "/kept"}};

/// What the program does with its choices.
struct Step {
    const char* name;
    std::function<void(PlaylistDatabaseManager&)> act;
    PreferredMatches after;
    std::vector<std::string> failures; ///< what a line may begin with
};

const std::vector<Step>& steps() {
    static const std::vector<Step> all{
        {"choice saved",
         [](PlaylistDatabaseManager& database) { database.savePreferredMatch("a", "/new"); },
         {{"a", "/new"}, {"b", "/kept"}},
         {"Error saving preferred match: ", "Error preparing preferred match insert: "}},
        {"choices replaced",
         [](PlaylistDatabaseManager& database) {
             database.replacePreferredMatches({{"b", "/1"}, {"c", "/2"}});
         },
         {{"b", "/1"}, {"c", "/2"}},
         {"Error clearing preferred matches: ", "Error saving preferred match: ",
          "Error preparing preferred match insert: "}},
        {"choice looked up",
         [](PlaylistDatabaseManager& database) {
             const auto path = database.preferredPath("a");
             EXPECT_TRUE(!path || *path == "/old" || *path == "/new") << *path;
         },
         oldRows,
         {"Error preparing preferred match lookup: "}},
        {"all choices read",
         [](PlaylistDatabaseManager& database) {
             for (const auto& [key, path] : database.allPreferredMatches())
                 EXPECT_TRUE(oldRows.contains(key) || path == "/2") << key;
         },
         oldRows,
         {"Error preparing select all preferred matches: "}},
    };
    return all;
}

/// The database in a folder of its own, with the old rows in it.
class Shelf {
public:
    Shelf() {
        folders.folder = folder.path();
        PlaylistDatabaseManager(folders, console).replacePreferredMatches(oldRows);
        EXPECT_THAT(console.lines(), testing::IsEmpty());
    }

    std::string file() const { return folder.path("orvalen.sqlite"); }
    PlaylistDatabaseManager& database() {
        if (!database_)
            database_ = std::make_unique<PlaylistDatabaseManager>(folders, console);
        return *database_;
    }
    void endProgram() { database_.reset(); }

    /// What another program reads, which finds the file sound.
    PreferredMatches rowsOnDisk() {
        EXPECT_EQ(OtherProgram(file()).ask("PRAGMA integrity_check"), "ok");
        return PlaylistDatabaseManager(folders, ignored).allPreferredMatches();
    }

    TemporaryFolder folder;
    FakeUserFolders folders;
    FakeConsole console;
    FakeConsole ignored;

private:
    std::unique_ptr<PlaylistDatabaseManager> database_;
};

bool isSubset(const PreferredMatches& part, const PreferredMatches& whole) {
    return std::all_of(part.begin(), part.end(), [&](const auto& row) {
        const auto found = whole.find(row.first);
        return found != whole.end() && found->second == row.second;
    });
}

bool isAllowed(const std::string& line, const Step& step) {
    return std::any_of(step.failures.begin(), step.failures.end(),
                       [&](const std::string& beginning) { return line.starts_with(beginning); });
}

/// What is on the disk after a step in which something went wrong, in words; a row is never half written.
std::string outcomeOf(Shelf& shelf, const Step& step) {
    const std::vector<std::string> lines = shelf.console.lines();
    for (const std::string& line : lines)
        EXPECT_TRUE(isAllowed(line, step)) << line;
    const PreferredMatches rows = shelf.rowsOnDisk();
    if (lines.empty()) {
        EXPECT_EQ(rows, step.after) << "nothing was said, and yet it is not there";
    } else if (lines.front().starts_with("Error clearing")) {
        EXPECT_EQ(rows, oldRows);
    } else if (rows != oldRows) {
        EXPECT_TRUE(isSubset(rows, step.after));
        EXPECT_LE(step.after.size() - rows.size(), lines.size()) << "each row that is not there is a line";
    }
    const std::string told = lines.empty() ? "silent; " : "told; ";
    if (step.after == oldRows)
        return told + "every row as before";
    return told + (rows == step.after ? "new rows there"
                   : rows == oldRows  ? "old rows there"
                                      : "the other new rows there");
}

class DatabaseFaults : public testing::TestWithParam<Step> {
protected:
    const Step& step = GetParam();
};

TEST_P(DatabaseFaults, EveryCallFailsInTurn) {
    std::vector<int> counts;
    {
        Shelf shelf;
        shelf.database();
        const FailingCalls calls({shelf.file()});
        step.act(shelf.database());
        for (const Call call : allCalls())
            counts.push_back(calls.count(call));
        EXPECT_GT(calls.count(Call::read) + calls.count(Call::write), 0) << "the calls are seen";
    }
    for (const Call call : allCalls())
        for (int number = 0; number < counts[static_cast<std::size_t>(call)]; ++number)
            for (const int error : {EIO, ENOSPC}) {
                const Fault fault{call, number, Fault::Way::error, error};
                SCOPED_TRACE(std::string(nameOf(call)) + " " + std::to_string(number) + ": " + nameOf(fault));
                Shelf shelf;
                shelf.database();
                {
                    const FailingCalls calls({shelf.file()}, fault);
                    step.act(shelf.database());
                }
                report(step.name, nameOf(call), nameOf(fault), outcomeOf(shelf, step));
                shelf.console.clear();
                step.act(shelf.database());
                EXPECT_THAT(shelf.console.lines(), testing::IsEmpty()) << "the program goes on";
                EXPECT_EQ(shelf.rowsOnDisk(), step.after);
            }
}

INSTANTIATE_TEST_SUITE_P(Steps, DatabaseFaults, testing::ValuesIn(steps()), [](const auto& each) {
    std::string name = each.param.name;
    std::replace(name.begin(), name.end(), ' ', '_');
    return name;
});

/// Whatever happens while the file is opened: every step can be asked for, and the next start finds the rows.
TEST(DatabaseOpening, EveryCallFailsInTurn) {
    std::vector<int> counts;
    {
        Shelf shelf;
        const FailingCalls calls({shelf.file()});
        shelf.database();
        for (const Call call : allCalls())
            counts.push_back(calls.count(call));
    }
    for (const Call call : allCalls())
        for (int number = 0; number < counts[static_cast<std::size_t>(call)]; ++number)
            for (const int error : {EIO, EACCES}) {
                const Fault fault{call, number, Fault::Way::error, error};
                SCOPED_TRACE(std::string(nameOf(call)) + " " + std::to_string(number) + ": " + nameOf(fault));
                Shelf shelf;
                {
                    const FailingCalls calls({shelf.file()}, fault);
                    shelf.database();
                }
                const auto lines = shelf.console.lines();
                ASSERT_LE(lines.size(), 1U);
                if (!lines.empty()) {
                    EXPECT_TRUE(lines.front() == "Unable to open database at " + shelf.file() ||
                                lines.front().starts_with("Error creating tables: "))
                        << lines.front();
                }
                for (const Step& step : steps())
                    step.act(shelf.database());
                shelf.endProgram();
                const PreferredMatches rows = shelf.rowsOnDisk();
                EXPECT_TRUE(rows == oldRows || rows == steps()[1].after) << "all of them or none";
                report("choices opened", nameOf(call), nameOf(fault),
                       (lines.empty() ? "silent; " : "told; ") +
                           std::string(rows == oldRows ? "nothing is kept in this run, old rows there"
                                                       : "kept as usual"));
            }
}

struct State {
    const char* name;
    std::function<void(Shelf&)> spoil;
    std::vector<std::string> lines; ///< of all steps in their order
};

/// The file itself is not as it should be, from the start.
TEST(DatabaseState, IsToldStepByStep) {
    const State states[] = {
        {
            "no database",
            [](Shelf& shelf) {
                TemporaryFolder other;
                other.write("file", std::string(5000, '?'));
                std::filesystem::copy_file(other.path("file"), shelf.file(),
                                           std::filesystem::copy_options::overwrite_existing);
            },
            {"Error creating tables: file is not a database",
             "Error preparing preferred match insert: file is not a database",
             "Error clearing preferred matches: file is not a database",
             "Error preparing preferred match lookup: file is not a database",
             "Error preparing select all preferred matches: file is not a database"},
        },
        {"a named pipe",
         [](Shelf& shelf) {
             std::filesystem::remove(shelf.file());
             ASSERT_EQ(::mkfifo(shelf.file().c_str(), 0600), 0);
         },
         {"Unable to open database at {}"}},
        {
            "a folder",
            [](Shelf& shelf) {
                std::filesystem::remove(shelf.file());
                std::filesystem::create_directory(shelf.file());
            },
            {"Unable to open database at {}"},
        },
    };
    for (const State& state : states) {
        SCOPED_TRACE(state.name);
        Shelf shelf;
        state.spoil(shelf);
        for (const Step& step : steps())
            step.act(shelf.database());
        std::vector<std::string> lines = shelf.console.lines();
        for (std::string& line : lines)
            if (const auto place = line.find(shelf.file()); place != std::string::npos)
                line.replace(place, shelf.file().size(), "{}");
        EXPECT_EQ(lines, state.lines);
        report("choices", "in their file's place", state.name, "told; no choices in this run");
    }
}

TEST(DatabaseState, WhileAnotherProgramHoldsItTheOldRowsStay) {
    Shelf shelf;
    shelf.database();
    OtherProgram other(shelf.file());
    other.run("BEGIN EXCLUSIVE");
    steps()[0].act(shelf.database());
    steps()[1].act(shelf.database());
    other.run("COMMIT");
    EXPECT_THAT(shelf.console.lines(),
                testing::ElementsAre("Error saving preferred match: database is locked",
                                     "Error clearing preferred matches: database is locked"));
    EXPECT_EQ(shelf.rowsOnDisk(), oldRows);
    report("choices", "their file", "locked by another program", "told; old rows there");
}

TEST(DatabaseState, WhatMayOnlyBeReadIsReadAndEachChoiceThatIsNotKeptIsTold) {
    Shelf shelf;
    {
        const FailingCalls calls({shelf.file()}, Fault{Call::open, 0, Fault::Way::error, EACCES});
        shelf.database();
    }
    EXPECT_EQ(shelf.database().preferredPath("a"), "/old");
    steps()[0].act(shelf.database());
    steps()[1].act(shelf.database());
    EXPECT_THAT(
        shelf.console.lines(),
        testing::ElementsAre("Error saving preferred match: attempt to write a readonly database",
                             "Error clearing preferred matches: attempt to write a readonly database"));
    EXPECT_EQ(shelf.rowsOnDisk(), oldRows);
    report("choices", "their file", "read-only", "told; old rows there");
}

} // namespace
} // namespace orvalen::test
