#include "core/Keys.h"

#include "core/Text.h"

#include <gtest/gtest.h>
#include <random>
#include <vector>

namespace orvalen::test {
namespace {

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
        {"\u039F\u0394\u039F\u03A3 \u03A3", "\u03BF\u03B4\u03BF\u03C2 \u03C3"}, // the sigma at a word's end
        {"\u0419\u043E\u0433", "\u0438\u043E\u0433"},
        {"\u0915\u093E\u092E", "\u0915\u093E\u092E"}, // a vowel sign stays
        {"\u65E5\u672C\u3000\u8A9E", "\u65E5\u672C \u8A9E"},
        {"\uAC00\u1100\u1161", "\uAC00\uAC00"}, // syllables are composed
        {std::string("a\0b", 3), "a b"},
        {"\u212Bngstr\u00F6m", "angstrom"},               // the sign for the unit
        {"a\u00A0b\u2028c\u200Bd", "a b c d"},            // spaces and breaks of every kind
        {"\uFF21\uFF42 \uFB01n", "\uFF41\uFF42 \uFB01n"}, // wide letters and ligatures stay
        {"Vi\u1EC7t e\u0301\u0302\u0303x", "viet ex"},    // several marks on one letter
        {"\u0301 \U0001F3B5", ""},
        {"Caf\xE9 Mar \xFF\xC3", "caf mar"}, // bytes that are no text
    };
    for (const Case& c : cases)
        EXPECT_EQ(normalize(c.text), c.normalized) << c.text;
}

/// The short ways for ASCII and Latin texts are left as soon as a character of another script stands in the
/// text, and a word more must not change what comes before it.
TEST(Normalize, GivesTheSameTheShortWayAndTheLong) {
    std::mt19937 random(11);
    std::size_t nonEmpty = 0;
    for (int round = 0; round < 20'000; ++round) {
        const unsigned highest = round % 2 == 0 ? 0x7F : 0x36F;
        std::string text;
        for (std::size_t length = random() % 8; length > 0; --length) {
            const unsigned c = random() % 16 == 0 ? 0x2000U + static_cast<unsigned>(random() % 0x70)
                                                  : static_cast<unsigned>(random() % (highest + 1));
            if (c < 0x80)
                text += static_cast<char>(c);
            else if (c < 0x800)
                text.append({static_cast<char>(0xC0 | c >> 6), static_cast<char>(0x80 | (c & 0x3F))});
            else
                text.append({static_cast<char>(0xE0 | c >> 12), static_cast<char>(0x80 | (c >> 6 & 0x3F)),
                             static_cast<char>(0x80 | (c & 0x3F))});
        }
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
