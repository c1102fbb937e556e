#include "core/Excerpt.h"

#include <gtest/gtest.h>

namespace orvalen::test {
namespace {

TEST(Excerpt, CutsBetweenCharacters) {
    const struct {
        std::string text;
        std::size_t characters;
        std::string shown;
    } cases[] = {
        {"", 3, ""},
        {"abc", 3, "abc"},
        {"abcd", 3, "abc…"},
        {"äöü", 3, "äöü"},
        {"äöüß", 3, "äöü…"},
        {"日本語の", 3, "日本語…"},
        {"\x80\x80\x80\x80", 3, "\x80\x80\x80\x80"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(excerpt(c.text, c.characters), c.shown) << c.text;
}

} // namespace
} // namespace orvalen::test
