#include "tidy/TidyRules.h"

#include <gtest/gtest.h>

namespace orvalen::test {
namespace {

struct Case {
    TidyRule rule;
    const char* line;
    const char* tidied; ///< null: stays as it is
};

TEST(TidyRules, RemoveOneFlawAndNothingElse) {
    for (const Case& c : {
             Case{withPlainBlanks, "ABBA\u00A0\u2013\u2009Waterloo\u200B", "ABBA \u2013 Waterloo"},
             Case{withPlainBlanks, "ABBA - Waterloo", nullptr},

             Case{withoutEmoji, "ABBA - Waterloo \U0001F389\U0001F389", "ABBA - Waterloo"},
             Case{withoutEmoji, "\u2764\uFE0F ABBA - Waterloo", "ABBA - Waterloo"},
             Case{withoutEmoji, "ABBA \U0001F468\u200D\U0001F469 - Waterloo", "ABBA - Waterloo"},
             Case{withoutEmoji, "ABBA - \U0001F389", nullptr},
             Case{withoutEmoji, "\U0001F389", nullptr},
             Case{withoutEmoji, "Artist\u2122 - 10 \u2192 20 # * 7", nullptr},
             Case{withoutEmoji, "\u0645\u06CC\u200C\u062E - \u0642", nullptr},

             Case{withoutBullet, "\u2022 ABBA - Waterloo", "ABBA - Waterloo"},
             Case{withoutBullet, "- ABBA - Waterloo", "ABBA - Waterloo"},
             Case{withoutBullet, "*NSYNC - Bye Bye Bye", nullptr},
             Case{withoutBullet, "-M- - Je dis aime", nullptr},
             Case{withoutBullet, "+44 - When Your Heart Stops Beating", nullptr},
             Case{withoutBullet, "- ", nullptr},

             Case{withoutQuotationMarks, "\u201CABBA - Waterloo\u201D", "ABBA - Waterloo"},
             Case{withoutQuotationMarks, "ABBA - \"Waterloo\"", "ABBA - Waterloo"},
             Case{withoutQuotationMarks, "\u201EABBA\u201C \u2013 \u201EWaterloo\u201C",
                  "ABBA \u2013 Waterloo"},
             Case{withoutQuotationMarks, "'Til Tuesday - Voices Carry", nullptr},
             Case{withoutQuotationMarks, "Queen - 'Heroes' and 'Fools'", nullptr},
             Case{withoutQuotationMarks, "New Order - Blue Monday 12\"", nullptr},
             Case{withoutQuotationMarks, "\"Weird Al\" Yankovic - Eat It", nullptr},

             Case{withoutNote, "Etta James - At Last (first dance)", "Etta James - At Last"},
             Case{withoutNote, "ABBA - Waterloo (Please!!)", "ABBA - Waterloo"},
             Case{withoutNote, "ABBA - Waterloo [MUST PLAY]", "ABBA - Waterloo"},
             Case{withoutNote, "ABBA - Waterloo ()", "ABBA - Waterloo"},
             Case{withoutNote, "ABBA - Waterloo (Extended Mix)", nullptr},
             Case{withoutNote, "ABBA - Waterloo (Live)", nullptr},
             Case{withoutNote, "Beastie Boys - Fight (For Your Right)", nullptr},
             Case{withoutNote, "Artist - First Dance", nullptr},
             Case{withoutNote, "Artist - (Please)", nullptr},
             Case{withoutNote, "Artist - Song (please) Remix", nullptr},

             Case{withDashForTab, "ABBA\tWaterloo", "ABBA \u2013 Waterloo"},
             Case{withDashForTab, "ABBA\t\tWaterloo", "ABBA \u2013 Waterloo"},
             Case{withDashForTab, "1\tABBA\tWaterloo", nullptr},
             Case{withDashForTab, "ABBA\t- Waterloo", nullptr},
             Case{withDashForTab, "ABBA - Waterloo\t2:45", nullptr},

             Case{withSpacedDash, "ABBA -Waterloo", "ABBA \u2013 Waterloo"},
             Case{withSpacedDash, "ABBA- Waterloo", "ABBA \u2013 Waterloo"},
             Case{withSpacedDash, "ABBA\u2013Waterloo", "ABBA \u2013 Waterloo"},
             Case{withSpacedDash, "ABBA -- Waterloo", "ABBA \u2013 Waterloo"},
             Case{withSpacedDash, "Jay-Z -Encore", "Jay-Z \u2013 Encore"},
             Case{withSpacedDash, "ABBA - Waterloo", nullptr},
             Case{withSpacedDash, "ABBA - Take-On\u2013Me", nullptr},
             Case{withSpacedDash, "Jay-Z Encore", nullptr},
             Case{withSpacedDash, "Hits 1990\u20131995", nullptr},
             Case{withSpacedDash, "A - B - C", nullptr},
             Case{withSpacedDash, "- ABBA", nullptr},
         })
        EXPECT_EQ(c.rule(c.line), c.tidied ? c.tidied : c.line) << c.line;
}

TEST(TidyRules, TellANumberFromAName) {
    struct NumberCase {
        const char* line;
        int number;
        const char* rest;
    };
    for (const NumberCase& c : {
             NumberCase{"1. ABBA - Waterloo", 1, "ABBA - Waterloo"},
             NumberCase{"12) ABBA - Waterloo", 12, "ABBA - Waterloo"},
             NumberCase{"#3 ABBA - Waterloo", 3, "ABBA - Waterloo"},
             NumberCase{"07 - ABBA - Waterloo", 7, "ABBA - Waterloo"},
             NumberCase{"4\tABBA\tWaterloo", 4, "ABBA\tWaterloo"},
             NumberCase{"50 Cent - In Da Club", -1, nullptr}, NumberCase{"22 - Taylor Swift", -1, nullptr},
             NumberCase{"99 Luftballons - Nena", -1, nullptr},
             NumberCase{"10cc - I'm Not In Love", -1, nullptr}, NumberCase{"1999", -1, nullptr},
             NumberCase{"4.50 from Paddington", -1, nullptr},
             NumberCase{"#9 Dream - Lennon", 9, "Dream - Lennon"}, // a list decides: see TidyText
         }) {
        const NumberedLine numbered = numberedLine(c.line);
        EXPECT_EQ(numbered.number, c.number) << c.line;
        EXPECT_EQ(numbered.rest, c.rest ? c.rest : c.line) << c.line;
    }
}

} // namespace
} // namespace orvalen::test
