#include "matching/RememberedPaths.h"

#include "support/OtherProgram.h"
#include "support/TestPlatform.h"

#include <chrono>
#include <gmock/gmock.h>
#include <sqlite3.h>

namespace orvalen::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// Another program's hand on the database file.
void runElsewhere(const TestPlatform& world, const char* script) {
    sqlite3* db = nullptr;
    ASSERT_EQ(sqlite3_open(world.support().path("orvalen.sqlite").c_str(), &db), SQLITE_OK);
    EXPECT_EQ(sqlite3_exec(db, script, nullptr, nullptr, nullptr), SQLITE_OK) << sqlite3_errmsg(db);
    sqlite3_close(db);
}

TEST(RememberedPaths, AreThoseOfTheirKeys) {
    TestPlatform world;
    world.database().replacePreferredMatches({{"a", "/1"}, {"größe", "/ü"}, {"empty", ""}});
    runElsewhere(world, "INSERT INTO preferred_matches VALUES ('null', NULL)");
    const RememberedPaths paths(world.database(), {"a", "none", "größe", "a", "null", "empty"});
    const std::vector<std::optional<std::string>> expected = {"/1", {}, "/ü", "/1", {}, ""};
    for (std::size_t i = 0; i < expected.size(); ++i)
        EXPECT_EQ(paths.at(i), expected[i]) << i;
}

TEST(RememberedPaths, FollowEachChoiceThatIsMadeMeanwhile) {
    TestPlatform world;
    world.database().savePreferredMatch("a", "/1");
    const RememberedPaths paths(world.database(), {"a", "b"});
    EXPECT_EQ(paths.at(0), "/1");
    world.database().savePreferredMatch("b", "/2");
    EXPECT_EQ(paths.at(1), "/2");

    const RememberedPaths ofLaterLines(world.database(), {"a"});
    world.database().replacePreferredMatches({});
    EXPECT_EQ(ofLaterLines.at(0), std::nullopt);
}

TEST(RememberedPaths, AreAskedForOneByOneWhereTheTableCannotBeRead) {
    TestPlatform world;
    world.database().savePreferredMatch("a", "/1");
    runElsewhere(world, "ALTER TABLE preferred_matches RENAME TO elsewhere");
    const RememberedPaths paths(world.database(), {"a", "b"});
    EXPECT_THAT(world.console.lines(), IsEmpty());
    EXPECT_EQ(paths.at(0), std::nullopt);
    EXPECT_THAT(world.console.lines(),
                ElementsAre("Error preparing preferred match lookup: no such table: preferred_matches"));
    runElsewhere(world, "ALTER TABLE elsewhere RENAME TO preferred_matches");
    EXPECT_EQ(paths.at(0), "/1");
}

TEST(RememberedPaths, WaitOnceForAProgramThatHoldsTheDatabase) {
    TestPlatform world;
    world.database().savePreferredMatch("a", "/1");
    OtherProgram other(world.support().path("orvalen.sqlite"));
    other.run("BEGIN EXCLUSIVE");
    const RememberedPaths paths(world.database(), std::vector<std::string>(50, "a"));
    const auto start = std::chrono::steady_clock::now();
    for (std::size_t i = 0; i < 50; ++i)
        EXPECT_EQ(paths.at(i), std::nullopt);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(1)) << "5 s at 100 ms each";
    other.run("ROLLBACK");
    EXPECT_EQ(paths.at(0), "/1");
}

TEST(RememberedPaths, LeaveTheFileFreeForOthers) {
    TestPlatform world;
    world.database().savePreferredMatch("a", "/1");
    const RememberedPaths paths(world.database(), {"a"});
    runElsewhere(world, "BEGIN EXCLUSIVE; UPDATE preferred_matches SET preferred_path = '/2'; COMMIT");
    world.database().savePreferredMatch("b", "/3");
    EXPECT_EQ(paths.at(0), "/2") << "what changed is asked for again";
    EXPECT_THAT(world.console.lines(), IsEmpty());
}

} // namespace
} // namespace orvalen::test
