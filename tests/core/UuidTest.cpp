#include "core/Uuid.h"

#include <gtest/gtest.h>
#include <set>
#include <thread>
#include <vector>

namespace orvalen {
namespace {

TEST(Uuid, ReadsEitherCaseAndWritesUpperCase) {
    const auto lower = UUID::parse("00112233-4455-6677-8899-aabbccddeeff");
    const auto mixed = UUID::parse("00112233-4455-6677-8899-AaBbCcDdEeFf");
    ASSERT_TRUE(lower && mixed);
    EXPECT_EQ(lower, mixed);
    EXPECT_EQ(lower->toString(), "00112233-4455-6677-8899-AABBCCDDEEFF");
}

TEST(Uuid, ReadsNoOtherText) {
    using namespace std::string_view_literals;
    for (const std::string_view text :
         {""sv, "00112233-4455-6677-8899-AABBCCDDEEF"sv, "00112233-4455-6677-8899-AABBCCDDEEFF0"sv,
          "00112233445566778899AABBCCDDEEFF"sv, "{0112233-4455-6677-8899-AABBCCDDEEF}"sv,
          "00112233-4455-6677-8899-AABBCCDDEEFG"sv, "0011223-34455-6677-8899-AABBCCDDEEFF"sv,
          "00112233-4455-6677-8899-AABBCCDDEE F"sv, "00112233 4455 6677 8899 AABBCCDDEEFF"sv,
          "00112233-4455-6677-8899-AABBCCDDEE\0F"sv, "00112233-4455-6677-8899-AABBCCDDEE\xC3\x84"sv,
          "------------------------------------"sv})
        EXPECT_FALSE(UUID::parse(text)) << text;
}

TEST(Uuid, DrawsDistinctVersion4ValuesOnEveryThread) {
    constexpr std::size_t each = 2000;
    std::vector<std::vector<UUID>> drawn(4, std::vector<UUID>(each));
    {
        std::vector<std::jthread> threads;
        for (auto& values : drawn)
            threads.emplace_back([&values] {
                for (UUID& value : values)
                    value = UUID::random();
            });
    }
    std::set<UUID> distinct;
    std::set<char> variants;
    for (const auto& values : drawn)
        for (const UUID& value : values) {
            const std::string text = value.toString();
            ASSERT_EQ(text[14], '4') << text;
            variants.insert(text[19]);
            distinct.insert(value);
            EXPECT_EQ(UUID::parse(text), value);
        }
    EXPECT_EQ(distinct.size(), 4 * each);
    EXPECT_EQ(variants, (std::set<char>{'8', '9', 'A', 'B'}));
}

} // namespace
} // namespace orvalen
