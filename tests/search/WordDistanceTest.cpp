#include "search/WordDistance.h"

#include <gtest/gtest.h>

namespace orvalen::test {
namespace {

TEST(EditDistance, CountsEditsUpToItsLimit) {
    struct Case {
        const char32_t* left;
        const char32_t* right;
        std::size_t limit;
        std::size_t distance;
    };
    for (const Case& c :
         {Case{U"robyn", U"robyn", 2, 0}, Case{U"robyn", U"robin", 2, 1}, Case{U"sheran", U"sheeran", 2, 1},
          Case{U"rhianna", U"rihanna", 2, 1}, Case{U"", U"ab", 2, 2}, Case{U"kitten", U"sitting", 3, 3},
          Case{U"kitten", U"sitting", 2, 3}, Case{U"a", U"abcdef", 2, 3}}) {
        EXPECT_EQ(editDistance(c.left, c.right, c.limit), c.distance);
        EXPECT_EQ(editDistance(c.right, c.left, c.limit), c.distance);
    }
}

TEST(Resemblance, IsOfMisspellingsOnly) {
    const auto between = [](std::string_view left, std::string_view right) {
        return resemblance(lettersOf(left), lettersOf(right));
    };
    EXPECT_EQ(between("one", "one"), 1);
    for (const auto& [left, right] : {std::pair("robyn", "robin"), std::pair("whitney", "withney"),
                                      std::pair("дорога", "дорого"), std::pair("hypnotize", "hypnotise")}) {
        EXPECT_GT(between(left, right), 0.5F) << left;
        EXPECT_LT(between(left, right), 1) << left;
    }
    for (const auto& [left, right] :
         {std::pair("no", "on"), std::pair("1998", "1999"), std::pair("u2", "u"), std::pair("queen", "green"),
          std::pair("love", "dove2"), std::pair("dance", "trance music")})
        EXPECT_LT(between(left, right), 0.5F) << left << ' ' << right;
}

} // namespace
} // namespace orvalen::test
