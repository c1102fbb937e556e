#include "core/Text.h"

#include "core/Track.h"

#include <gtest/gtest.h>

namespace orvalen::test {
namespace {

TEST(Text, EqualityAndHashFollowCanonicalEquivalence) {
    struct Case {
        std::string_view left;
        std::string_view right;
        bool equal;
    };
    const Case cases[] = {
        {"", "", true},
        {"\u212B", "A\u030A", true}, // Ångström sign
        {"\u212A", "K", true},       // Kelvin sign: the one form is ASCII
        {"\uAC01", "\u1100\u1161\u11A8", true},
        {"a\u0323\u0307", "a\u0307\u0323", true},  // marks of different places in either order
        {"a\u0302\u0301", "a\u0301\u0302", false}, // marks of one place keep theirs
        {"Café", "Cafe", false},
        {"ﬁ", "fi", false}, // compatibility is not equivalence
        {"\xFF", "\xFE", false},
    };
    for (const auto& [left, right, equal] : cases) {
        EXPECT_EQ(canonicallyEqual(left, right), equal) << left << ", " << right;
        EXPECT_EQ(canonicallyEqual(right, left), equal) << left << ", " << right;
        if (equal) {
            EXPECT_EQ(canonicalHash(left), canonicalHash(right)) << left << ", " << right;
        }
    }
}

TEST(Text, APrefixNeverCutsAnAccentOffItsLetter) {
    EXPECT_TRUE(hasCanonicalPrefix("/Music/AB/x", "/Music/A"));
    EXPECT_TRUE(hasCanonicalPrefix("/Cafe\u0301/x", "/Café"));
    EXPECT_TRUE(hasCanonicalPrefix("/Café/x", "/Cafe\u0301/"));
    EXPECT_TRUE(hasCanonicalPrefix("K/x", "\u212A"));
    EXPECT_FALSE(hasCanonicalPrefix("/Cafe\u0301", "/Cafe"));
}

TEST(Text, TracksWithEqualTextsAreEqualAndHashAlike) {
    const Track base{"T", "Café", "House", "/p", 128};
    const Track same{"T", "Cafe\u0301", "House", "/p", 128};
    EXPECT_EQ(base, same);
    EXPECT_EQ(TrackHash()(base), TrackHash()(same));
    for (const Track& other : {Track{"U", "Café", "House", "/p", 128}, Track{"T", "Cafe", "House", "/p", 128},
                               Track{"T", "Café", "", "/p", 128}, Track{"T", "Café", "House", "/q", 128},
                               Track{"T", "Café", "House", "/p", 0}, Track{"T", "Café", "House", "/p", {}}})
        EXPECT_FALSE(base == other);
}

TEST(Text, KnowsValidUtf8AndMendsTheRest) {
    const std::pair<std::string_view, std::string_view> cases[] = {
        {"größe 日本 🎵", "größe 日本 🎵"},
        {"a\xC3", "a\uFFFD"},
        {"\xC0\xAF", "\uFFFD\uFFFD"},           // a slash written too long
        {"\xED\xA0\x80", "\uFFFD\uFFFD\uFFFD"}, // half of a pair
        {"\x80ok", "\uFFFDok"},
    };
    for (const auto& [bytes, mended] : cases) {
        EXPECT_EQ(isValidUtf8(bytes), bytes == mended) << mended;
        EXPECT_EQ(toValidUtf8(bytes), mended);
        EXPECT_TRUE(isValidUtf8(toValidUtf8(bytes)));
    }
}

TEST(Text, TrimsBlanksOfEveryScriptAndLineBreaksWhereAsked) {
    struct Case {
        std::string_view text;
        std::string_view trimmed;
        std::string_view ofBlanks;
    };
    const Case cases[] = {
        {"", "", ""},
        {" \t a b \t ", "a b", "a b"},
        {" \u2028 \u0085x\v\f", "x", "\u2028 \u0085x\v\f"},
        {"\u200Bx", "\u200Bx", "\u200Bx"}, // has no width but is no space
        {"\xFF \xFF", "\xFF \xFF", "\xFF \xFF"},
        {" \n ", "", "\n"},
    };
    for (const auto& [text, all, ofBlanks] : cases) {
        EXPECT_EQ(trimmed(text), all) << testing::PrintToString(text);
        EXPECT_EQ(trimmedOfBlanks(text), ofBlanks) << testing::PrintToString(text);
        EXPECT_EQ(isBlank(text), all.empty());
    }
}

} // namespace
} // namespace orvalen::test
