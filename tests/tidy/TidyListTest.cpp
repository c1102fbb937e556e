#include "tidy/TidyList.h"

#include "core/LibraryIndexBuilder.h"
#include "support/Builders.h"

#include <gmock/gmock.h>

namespace orvalen::test {
namespace {

using testing::ElementsAre;

TEST(TidyText, TidiesEveryLineAndKeepsGoodOnesAndTheBreaks) {
    const std::string good =
        "50 Cent - In Da Club\n22 - Taylor Swift\n#9 Dream - John Lennon\n"
        "  *NSYNC \u2013 Bye Bye Bye\nJay-Z \u2014 99 Problems\n1. FC K\u00F6ln - Hymne\n"
        "Bryan Adams - Summer Of '69\nA-ha - Take On Me (Live)\nU2 - \"40\" (Live)\n"
        "Prince - 1999\n2 Unlimited - No Limit\nPlain text";
    const std::pair<std::string, std::string> cases[] = {
        {"Our list \U0001F496\r\n\r\n1. ABBA\u00A0-\u00A0\u201CWaterloo\u201D (please!!)\n"
         "2.\tRobyn\tCall \U0001F389\n3) Air\u2013La",
         "Our list\r\n\r\nABBA - Waterloo\nRobyn \u2013 Call\nAir \u2013 La"},
        {"1. \u2022 ABBA \u2013Waterloo (first dance) \U0001F389\n2. Robyn\tCall",
         "ABBA \u2013 Waterloo\nRobyn \u2013 Call"},
        {"", ""},
        {" \n", " \n"},
        {good, good},
        {"1. A - B\n2. C - D", "A - B\nC - D"}, // numbers go only when they count
        {"1. FC - Song\nC - D", "1. FC - Song\nC - D"},
        {"8. A - B\n3. C - D\n1. E - F", "8. A - B\n3. C - D\n1. E - F"},
    };
    for (const auto& [text, tidied] : cases) {
        EXPECT_EQ(tidyText(text), tidied);
        EXPECT_EQ(tidyText(tidied), tidied) << "tidied once more";
    }
}

TEST(ProposedReadings, AreForLinesThatAreNotRead) {
    struct Case {
        const char* line;
        std::vector<std::string> readings;
    };
    for (const Case& c : {
             Case{"Waterloo by ABBA", {"ABBA \u2013 Waterloo"}},
             Case{"Stand By Me by Ben E. King", {"Ben E. King \u2013 Stand By Me"}},
             Case{"Stand by me", {}},
             Case{"Baby", {}},
             Case{"Queen - Radio Ga Ga - Remastered 2011",
                  {"Queen \u2013 Radio Ga Ga", "Queen \u2013 Radio Ga Ga (Remastered 2011)"}},
             Case{"Robyn \u2013 Call - Remix", {"Robyn \u2013 Call (Remix)", "Robyn \u2013 Call"}},
             Case{"A - B - C - D", {}},
             Case{"Queen-Radio Ga Ga", {"Queen \u2013 Radio Ga Ga"}},
             Case{"Jay-Z-Encore", {}},
             Case{"Queen - Killed by Death", {}},
         })
        EXPECT_EQ(proposedReadings(c.line, "artist-title"), c.readings) << c.line;
    EXPECT_THAT(proposedReadings("Waterloo by ABBA", "title-artist"), ElementsAre("Waterloo \u2013 ABBA"));
}

TEST(TidyDecisions, AskTheLibraryAboutOtherForms) {
    const LibraryCatalog catalog(
        buildIndex(std::vector{track("Earth, Wind & Fire", "September"),
                               track("Beyonc\u00E9", "Crazy In Love"), track("ABBA", "Waterloo")}));
    const std::string text =
        "ABBA - Waterloo\nEarth, Wind and Fire - September\nBeyonce feat. Jay-Z - Crazy in love\n"
        "Nobody feat. Him - Nothing\nFernando by ABBA";
    const std::vector<TidyDecision> decisions = tidyDecisions(catalog, text, "artist-title");
    ASSERT_EQ(decisions.size(), 3U);
    EXPECT_THAT(decisions[0].readings, ElementsAre("Earth, Wind & Fire \u2013 September"));
    EXPECT_THAT(decisions[1].readings, ElementsAre("Beyonce \u2013 Crazy in love"));
    EXPECT_THAT(decisions[2].readings, ElementsAre("ABBA \u2013 Fernando"));
    for (const TidyDecision& decision : decisions)
        EXPECT_EQ(text.substr(decision.offset, decision.line.size()), decision.line);
}

} // namespace
} // namespace orvalen::test
