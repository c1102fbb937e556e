#include "matching/RememberedPaths.h"

#include "support/OtherProgram.h"
#include "support/TestPlatform.h"

#include <chrono>
#include <gmock/gmock.h>
#include <map>

namespace orvalen::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class RememberedPathsTest : public testing::Test {
protected:
    RememberedPathsTest() {
        test.database().replacePreferredMatches({{"a", "/1"}, {"größe", "/ü"}, {"empty", ""}});
    }

    TestPlatform test;
    RememberedPaths paths{test.database()};
    OtherProgram other{test.support().path("orvalen.sqlite")};
};

TEST_F(RememberedPathsTest, AreThoseOfTheirKeysAndFollowEachChoice) {
    other.run("INSERT INTO preferred_matches VALUES ('null', NULL)");
    const std::map<std::string, std::optional<std::string>> expected = {
        {"a", "/1"}, {"none", {}}, {"größe", "/ü"}, {"null", {}}, {"empty", ""}};
    for (const auto& [key, path] : expected)
        EXPECT_EQ(paths.of(key), path) << key;
    test.database().savePreferredMatch("b", "/2");
    EXPECT_EQ(paths.of("b"), "/2");
    other.run("BEGIN EXCLUSIVE; UPDATE preferred_matches SET preferred_path = '/3' WHERE key = 'a'; COMMIT");
    test.database().savePreferredMatch("b", "/4");
    EXPECT_EQ(paths.of("a"), "/3") << "the file is free for others and is read again after a change";
    test.database().removePreferredMatch("b");
    EXPECT_EQ(paths.of("b"), std::nullopt) << "an undone choice";
    test.database().replacePreferredMatches({});
    EXPECT_EQ(paths.of("a"), std::nullopt);
    EXPECT_THAT(test.console.lines(), IsEmpty());
}

TEST_F(RememberedPathsTest, AreAskedForOneByOneWhereTheTableCannotBeRead) {
    other.run("ALTER TABLE preferred_matches RENAME TO elsewhere");
    EXPECT_THAT(test.console.lines(), IsEmpty());
    EXPECT_EQ(paths.of("a"), std::nullopt);
    EXPECT_THAT(test.console.lines(),
                ElementsAre("Error preparing preferred match lookup: no such table: preferred_matches"));
    other.run("ALTER TABLE elsewhere RENAME TO preferred_matches");
    EXPECT_EQ(paths.of("a"), "/1");
}

TEST_F(RememberedPathsTest, WaitOnceForAProgramThatHoldsTheDatabase) {
    other.run("BEGIN EXCLUSIVE");
    const auto start = std::chrono::steady_clock::now();
    for (std::size_t i = 0; i < 50; ++i)
        EXPECT_EQ(paths.of("a"), std::nullopt);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(3)) << "5 s at 100 ms each";
    other.run("ROLLBACK");
    EXPECT_EQ(paths.of("a"), "/1");
}

} // namespace
} // namespace orvalen::test
