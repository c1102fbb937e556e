#include "core/Text.h"

#include "core/Track.h"
#include "support/Builders.h"

#include <gtest/gtest.h>
#include <unordered_set>

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
        {"Café", "Cafe\u0301", true},
        {"\u212B", "A\u030A", true}, // Ångström sign
        {"\u212A", "K", true},       // Kelvin sign: the one form is ASCII
        {"\u037E", ";", true},       // Greek question mark
        {"\uAC01", "\u1100\u1161\u11A8", true},
        {"a\u0323\u0307", "a\u0307\u0323", true},  // marks of different places in either order
        {"a\u0302\u0301", "a\u0301\u0302", false}, // marks of one place keep theirs
        {"Café", "Cafe", false},
        {"ﬁ", "fi", false}, // compatibility is not equivalence
        {"Ａ", "A", false},
        {"a", "a ", false},
        {"\xFF", "\xFE", false},
    };
    for (const auto& [left, right, equal] : cases) {
        EXPECT_EQ(canonicallyEqual(left, right), equal) << left << ", " << right;
        EXPECT_EQ(canonicallyEqual(right, left), equal) << left << ", " << right;
        if (equal) {
            EXPECT_EQ(canonicalHash(left), canonicalHash(right)) << left << ", " << right;
        }
    }
    TextMap<int> map;
    map["Cafe\u0301"] = 1;
    EXPECT_EQ(map.find(std::string_view("Café"))->second, 1);
}

TEST(Text, APrefixNeverCutsAnAccentOffItsLetter) {
    EXPECT_TRUE(hasCanonicalPrefix("/Music/House/a.mp3", "/Music/House"));
    EXPECT_TRUE(hasCanonicalPrefix("/Music/AB/x", "/Music/A"));
    EXPECT_TRUE(hasCanonicalPrefix("/Cafe\u0301/x", "/Café"));
    EXPECT_TRUE(hasCanonicalPrefix("/Café/x", "/Cafe\u0301/"));
    EXPECT_TRUE(hasCanonicalPrefix("K/x", "\u212A"));
    EXPECT_TRUE(hasCanonicalPrefix("x", ""));
    EXPECT_FALSE(hasCanonicalPrefix("/Cafe\u0301", "/Cafe"));
    EXPECT_FALSE(hasCanonicalPrefix("/Café", "/Cafe"));
    EXPECT_FALSE(hasCanonicalPrefix("/Musi", "/Music"));
}

TEST(Text, TracksWithEqualTextsAreEqualAndHashAlike) {
    const Track base = track("Café", "T", 128);
    EXPECT_EQ(base, track("Cafe\u0301", "T", 128));
    EXPECT_EQ(TrackHash()(base), TrackHash()(track("Cafe\u0301", "T", 128)));
    std::unordered_set<Track, TrackHash> set = {base, track("Café", "T"), track("Café", "T", 0),
                                                track("Cafe\u0301", "T", 128)};
    EXPECT_EQ(set.size(), 3U) << "no tempo, a tempo of 0 and of 128";
    Track other = base;
    other.genre = "House";
    EXPECT_FALSE(base == other);
    other = base;
    other.path = "/elsewhere";
    EXPECT_FALSE(base == other);
}

TEST(Text, KnowsValidUtf8AndMendsTheRest) {
    struct Case {
        std::string_view bytes;
        std::string_view mended;
    };
    const Case cases[] = {
        {"plain", "plain"},
        {"größe 日本 🎵", "größe 日本 🎵"},
        {"Caf\xE9", "Caf\uFFFD"},
        {"a\xC3", "a\uFFFD"},
        {"\xC0\xAF", "\uFFFD\uFFFD"},           // a slash written too long
        {"\xED\xA0\x80", "\uFFFD\uFFFD\uFFFD"}, // half of a pair
        {"\xF4\x90\x80\x80", "\uFFFD\uFFFD\uFFFD\uFFFD"},
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
        {"\r\na\n", "a", "\r\na\n"},
        {"\u00A0\u3000é\u2003", "é", "é"},
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

TEST(Text, TakesPathsApart) {
    struct Case {
        std::string_view path;
        std::string_view name;
        std::string_view bare;
        std::string_view extension;
    };
    const Case cases[] = {
        {"/Music/My.Song.mp3", "My.Song.mp3", "My.Song", "mp3"},
        {"/Music.d/Song", "Song", "Song", ""},
        {"Song.MP3", "Song.MP3", "Song", "MP3"},
        {"/Music/Song.", "Song.", "Song", ""},
        {"/Music/.mp3", ".mp3", "", "mp3"},
        {"/Music/", "", "", ""},
        {"", "", "", ""},
    };
    for (const auto& [path, name, bare, extension] : cases) {
        EXPECT_EQ(lastPathComponent(path), name) << path;
        EXPECT_EQ(bareName(path), bare) << path;
        EXPECT_EQ(pathExtension(path), extension) << path;
    }
}

} // namespace
} // namespace orvalen::test
