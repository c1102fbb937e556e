#include "core/Uuid.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <set>
#include <thread>
#include <vector>

namespace orvalen {
namespace {

TEST(Uuid, ReadsEitherCaseWritesUpperCaseAndTakesNoOtherText) {
    const auto mixed = UUID::parse("00112233-4455-6677-8899-AaBbCcDdEeFf");
    ASSERT_TRUE(mixed);
    EXPECT_EQ(mixed->toString(), "00112233-4455-6677-8899-AABBCCDDEEFF");
    for (const char* text : {"", "00112233-4455-6677-8899-AABBCCDDEEF",
                             "00112233-4455-6677-8899-AABBCCDDEEFF0", "00112233-4455-6677-8899-AABBCCDDEEFG",
                             "0011223-34455-6677-8899-AABBCCDDEEFF", "00112233 4455 6677 8899 AABBCCDDEEFF"})
        EXPECT_FALSE(UUID::parse(text)) << text;
}

TEST(Uuid, DrawsDistinctVersion4ValuesOnEveryThread) {
    constexpr std::size_t each = 2000;
    std::vector<std::vector<UUID>> drawn(2, std::vector<UUID>(each));
    {
        std::vector<std::jthread> threads;
        for (auto& values : drawn)
            threads.emplace_back([&values] { std::ranges::generate(values, UUID::random); });
    }
    std::set<UUID> distinct;
    std::set<char> variants;
    for (const auto& values : drawn)
        for (const UUID& value : values) {
            const std::string text = value.toString();
            ASSERT_EQ(text[14], '4') << text;
            variants.insert(text[19]);
            distinct.insert(value);
        }
    EXPECT_EQ(distinct.size(), 2 * each);
    EXPECT_EQ(variants, (std::set<char>{'8', '9', 'A', 'B'}));
}

} // namespace
} // namespace orvalen
