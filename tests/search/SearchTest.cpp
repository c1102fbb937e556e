#include "search/SongWords.h"

#include "search/WordDistance.h"

#include <gtest/gtest.h>

namespace orvalen::test {
namespace {

/// Returns the words in one line: asides in brackets, guests after a plus sign, articles after a tilde.
std::string shown(std::string_view text) {
    std::string result;
    for (const SongWord& word : songWords(text)) {
        result += result.empty() ? "" : " ";
        switch (word.role) {
        case WordRole::plain:
            result += word.text;
            break;
        case WordRole::aside:
            result += "(" + word.text + ")";
            break;
        case WordRole::guest:
            result += "+" + word.text;
            break;
        case WordRole::article:
            result += "~" + word.text;
            break;
        }
    }
    return result;
}

TEST(SongWords, AreSpelledOneWay) {
    struct Case {
        const char* text;
        const char* words;
    };
    for (const Case& c : {
             Case{"", ""},
             Case{"!!!", ""},
             Case{"The Night & Band", "~the night band"},
             Case{"Don't Stop", "dont stop"},
             Case{"Don\u2019t Stop", "dont stop"},
             Case{"Rock 'n' Roll", "rock ~and roll"},
             Case{"Livin' On", "livin on"},
             Case{"Y.M.C.A.", "ymca"},
             Case{"Plan B", "plan b"},
             Case{"P!nk", "pink"},
             Case{"Ke$ha", "kesha"},
             Case{"Wham! Live", "wham live"},
             Case{"$100", "100"},
             Case{"Café", "cafe"},
             Case{"Mambo Five", "mambo 5"},
             Case{"Nothing Compares 2 U", "nothing compares 2 you"},
             Case{"Crazy (feat. Jay-Z) [Remix]", "crazy +jay +z (remix)"},
             Case{"Ronson ft Bruno Mars", "ronson +bruno +mars"},
             Case{"Feature Film", "feature film"},
             Case{"Heroes - Remastered 2009", "heroes (remastered) (2009)"},
             Case{"(I've Had) The Time", "(ive) (had) ~the time"},
             Case{"Un)balanced (open", "un balanced (open)"},
         })
        EXPECT_EQ(shown(c.text), c.words) << c.text;
}

TEST(Resemblance, IsOfMisspellingsOnly) {
    const auto between = [](std::string_view left, std::string_view right) {
        return resemblance(lettersOf(left), lettersOf(right));
    };
    EXPECT_EQ(between("one", "one"), 1);
    for (const auto& [left, right] :
         {std::pair("robyn", "robin"), std::pair("whitney", "withney"), std::pair("дорога", "дорого"),
          std::pair("hypnotize", "hypnotise"), std::pair("sheeran", "sheran"), std::pair("cher", "cehr"),
          std::pair("coldplay", "koldpley")}) {
        EXPECT_GT(between(left, right), 0.5F) << left;
        EXPECT_LT(between(left, right), 1) << left;
        EXPECT_EQ(between(left, right), between(right, left)) << left;
    }
    for (const auto& [left, right] :
         {std::pair("no", "on"), std::pair("1998", "1999"), std::pair("u2", "u"), std::pair("queen", "green"),
          std::pair("love", "dove2"), std::pair("dance", "trance music")})
        EXPECT_LT(between(left, right), 0.5F) << left << ' ' << right;
}

} // namespace
} // namespace orvalen::test
