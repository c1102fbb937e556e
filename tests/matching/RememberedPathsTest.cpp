#include "matching/RememberedPaths.h"

#include "support/OtherProgram.h"
#include "support/TestPlatform.h"

#include <chrono>
#include <gmock/gmock.h>
#include <map>
#include <sqlite3.h>

namespace orvalen::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// Another program's hand on the database file.
void runElsewhere(const TestPlatform& test, const char* script) {
    sqlite3* db = nullptr;
    ASSERT_EQ(sqlite3_open(test.support().path("orvalen.sqlite").c_str(), &db), SQLITE_OK);
    EXPECT_EQ(sqlite3_exec(db, script, nullptr, nullptr, nullptr), SQLITE_OK) << sqlite3_errmsg(db);
    sqlite3_close(db);
}

TEST(RememberedPaths, AreThoseOfTheirKeys) {
    TestPlatform test;
    test.database().replacePreferredMatches({{"a", "/1"}, {"größe", "/ü"}, {"empty", ""}});
    runElsewhere(test, "INSERT INTO preferred_matches VALUES ('null', NULL)");
    RememberedPaths paths(test.database());
    const std::map<std::string, std::optional<std::string>> expected = {
        {"a", "/1"}, {"none", {}}, {"größe", "/ü"}, {"null", {}}, {"empty", ""}};
    for (const auto& [key, path] : expected)
        EXPECT_EQ(paths.of(key), path) << key;
}

TEST(RememberedPaths, FollowEachChoiceThatIsMadeMeanwhile) {
    TestPlatform test;
    test.database().savePreferredMatch("a", "/1");
    RememberedPaths paths(test.database());
    EXPECT_EQ(paths.of("a"), "/1");
    test.database().savePreferredMatch("b", "/2");
    EXPECT_EQ(paths.of("b"), "/2");
    test.database().replacePreferredMatches({});
    EXPECT_EQ(paths.of("a"), std::nullopt);
}

TEST(RememberedPaths, AreAskedForOneByOneWhereTheTableCannotBeRead) {
    TestPlatform test;
    test.database().savePreferredMatch("a", "/1");
    runElsewhere(test, "ALTER TABLE preferred_matches RENAME TO elsewhere");
    RememberedPaths paths(test.database());
    EXPECT_THAT(test.console.lines(), IsEmpty());
    EXPECT_EQ(paths.of("a"), std::nullopt);
    EXPECT_THAT(test.console.lines(),
                ElementsAre("Error preparing preferred match lookup: no such table: preferred_matches"));
    runElsewhere(test, "ALTER TABLE elsewhere RENAME TO preferred_matches");
    EXPECT_EQ(paths.of("a"), "/1");
}

TEST(RememberedPaths, WaitOnceForAProgramThatHoldsTheDatabase) {
    TestPlatform test;
    test.database().savePreferredMatch("a", "/1");
    OtherProgram other(test.support().path("orvalen.sqlite"));
    other.run("BEGIN EXCLUSIVE");
    RememberedPaths paths(test.database());
    const auto start = std::chrono::steady_clock::now();
    for (std::size_t i = 0; i < 50; ++i)
        EXPECT_EQ(paths.of("a"), std::nullopt);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(1)) << "5 s at 100 ms each";
    other.run("ROLLBACK");
    EXPECT_EQ(paths.of("a"), "/1");
}

TEST(RememberedPaths, LeaveTheFileFreeForOthers) {
    TestPlatform test;
    test.database().savePreferredMatch("a", "/1");
    RememberedPaths paths(test.database());
    runElsewhere(test, "BEGIN EXCLUSIVE; UPDATE preferred_matches SET preferred_path = '/2'; COMMIT");
    test.database().savePreferredMatch("b", "/3");
    EXPECT_EQ(paths.of("a"), "/2") << "the table is read again after a change";
    EXPECT_THAT(test.console.lines(), IsEmpty());
}

} // namespace
} // namespace orvalen::test
