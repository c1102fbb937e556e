#include "core/Text.h"

#include "core/Excerpt.h"
#include "core/Keys.h"
#include "core/Track.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <random>
#include <vector>

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
        {"a\u0323\u0307", "a\u0307\u0323", true},  // marks at different positions may be exchanged
        {"a\u0302\u0301", "a\u0301\u0302", false}, // marks at one position keep their order
        {"Café", "Cafe", false},
        {"ﬁ", "fi", false}, // compatible, but not canonically equivalent
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
        {"größe 日本 🎵", "größe 日本 🎵"},     {"a\xC3", "a\uFFFD"},
        {"\xC0\xAF", "\uFFFD\uFFFD"},           // a slash in an overlong encoding
        {"\xED\xA0\x80", "\uFFFD\uFFFD\uFFFD"}, // half of a surrogate pair
        {"\x80 in ASCII", "\uFFFD in ASCII"},
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
        {"\u200Bx", "\u200Bx", "\u200Bx"}, // has no width, but is not a space
        {"\xFF \xFF", "\xFF \xFF", "\xFF \xFF"},
        {" \n ", "", "\n"},
    };
    for (const auto& [text, all, ofBlanks] : cases) {
        EXPECT_EQ(trimmed(text), all) << testing::PrintToString(text);
        EXPECT_EQ(trimmedOfBlanks(text), ofBlanks) << testing::PrintToString(text);
        EXPECT_EQ(isBlank(text), all.empty());
    }
}

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

struct Case {
    std::string text;
    std::string normalized;
};

TEST(Normalize, BringsTextsToOneForm) {
    const std::vector<Case> cases = {
        {"Caf\u00E9", "cafe"},
        {"Cafe\u0301", "cafe"},
        {"\u00DCber Alles", "uber alles"},
        {"Rock 'n' Roll", "rock n roll"},
        {"don\u2019t \u2026", "don t"},
        {"  Hello,   World!! ", "hello world"},
        {"", ""},
        {"Sun_And_Sea", "sun and sea"},
        {"2Step", "2step"},
        {"Stra\u00DFe", "stra\u00DFe"},
        {"S\u00F8ren \u0141", "s\u00F8ren \u0142"},
        {"\u0130stanbul", "istanbul"},
        {"\u2160\u00BD", "\u2170\u00BD"},
        {"\u039F\u0394\u039F\u03A3 \u03A3",
         "\u03BF\u03B4\u03BF\u03C2 \u03C3"}, // the sigma at the end of a word
        {"\u0419\u043E\u0433", "\u0438\u043E\u0433"},
        {"\u0915\u093E\u092E", "\u0915\u093E\u092E"}, // a vowel sign stays
        {"\u65E5\u672C\u3000\u8A9E", "\u65E5\u672C \u8A9E"},
        {"\uAC00\u1100\u1161", "\uAC00\uAC00"}, // syllables are composed
        {std::string("a\0b", 3), "a b"},
        {"\u212Bngstr\u00F6m", "angstrom"},               // the sign for the unit Ångström
        {"a\u00A0b\u2028c\u200Bd", "a b c d"},            // all kinds of spaces and breaks
        {"\uFF21\uFF42 \uFB01n", "\uFF41\uFF42 \uFB01n"}, // wide letters and ligatures stay
        {"Vi\u1EC7t e\u0301\u0302\u0303x", "viet ex"},    // several marks on one letter
        {"\u0301 \U0001F3B5", ""},
        {"Caf\xE9 Mar \xFF\xC3", "caf mar"}, // invalid UTF-8
    };
    for (const Case& c : cases)
        EXPECT_EQ(normalize(c.text), c.normalized) << c.text;
}

/// The fast paths for ASCII and Latin end at the first character of another script. Appending such a word
/// must not change the text before it.
TEST(Normalize, GivesTheSameTheShortWayAndTheLong) {
    std::mt19937 random(11);
    std::size_t nonEmpty = 0;
    for (int round = 0; round < 20'000; ++round) {
        const unsigned highest = round % 2 == 0 ? 0x7F : 0x36F;
        std::u32string characters;
        for (std::size_t length = random() % 8; length > 0; --length)
            characters += static_cast<char32_t>(random() % 16 == 0 ? 0x2000 + random() % 0x70
                                                                   : random() % (highest + 1));
        const std::string text = std::filesystem::path(characters).string(); // as UTF-8
        const std::string shortWay = normalize(text);
        const std::string longWay = normalize(text + " \u65E5");
        ASSERT_EQ(shortWay.empty() ? "\u65E5" : shortWay + " \u65E5", longWay) << round;
        ASSERT_EQ(normalize(shortWay), shortWay) << round;
        nonEmpty += !shortWay.empty();
    }
    EXPECT_GT(nonEmpty, 10'000U);
}

TEST(LibraryKey, IsTheHalvesJoined) {
    EXPECT_EQ(libraryKey("The Night Band", "Last Train Home"), "the night band last train home");
    EXPECT_EQ(libraryKey("", "Intro"), "intro");
    EXPECT_EQ(libraryKey("Intro", ""), "intro");
    EXPECT_EQ(libraryKey("\u039F\u0394\u039F\u03A3", "\u0301a"), "\u03BF\u03B4\u03BF\u03C2 a");
}

TEST(FileNameKey, LeavesFolderAndExtensionOut) {
    EXPECT_EQ(fileNameKey("/Music/The Night Band - Last Train Home.mp3"), "the night band last train home");
    EXPECT_EQ(fileNameKey("/m/Song.Name.mp3"), "song name");
    EXPECT_EQ(fileNameKey("/m.usic/Song"), "song");
    EXPECT_EQ(fileNameKey("/m/.mp3"), "");
}

TEST(ContainmentTest, NeedsBothHalves) {
    const Track track{"Last Train Home", "The Night Band", "", "/m/x.mp3", {}};
    EXPECT_TRUE(containmentTest(track, "Night", "Train"));
    EXPECT_TRUE(containmentTest(track, "IGHT b", "ain ho"));
    EXPECT_FALSE(containmentTest(track, "Night", "Plane"));
    EXPECT_FALSE(containmentTest(track, "Day", "Train"));
    EXPECT_FALSE(containmentTest(track, "!!!", "Train"));
    EXPECT_FALSE(containmentTest(Track{"", "", "", "/m/x.mp3", {}}, "a", "a"));
}

} // namespace
} // namespace orvalen::test
