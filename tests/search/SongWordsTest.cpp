#include "search/SongWords.h"

#include <gtest/gtest.h>

namespace orvalen::test {
namespace {

/// The words in a row, asides in brackets, guests after a plus sign, articles after a tilde.
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

} // namespace
} // namespace orvalen::test
