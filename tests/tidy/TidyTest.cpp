#include "tidy/TidyList.h"

#include "core/LibraryIndexBuilder.h"
#include "support/Builders.h"
#include "tidy/LineCheck.h"
#include "tidy/TidyRules.h"

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
        {"1. A - B\n2. C - D", "A - B\nC - D"}, // numbers are removed only if they count upwards
        {"1. FC - Song\nC - D", "1. FC - Song\nC - D"},
        {"1. A - B\n1. C - D", "1. A - B\n1. C - D"},
        {"8. A - B\n3. C - D\n1. E - F", "8. A - B\n3. C - D\n1. E - F"},
    };
    for (const auto& [text, tidied] : cases) {
        EXPECT_EQ(tidyText(text), tidied);
        EXPECT_EQ(tidyText(tidied), tidied) << "tidied once more";
    }
}

TEST(ProposedReadings, AreForLinesThatAreNotReadOrReadWrongly) {
    struct Case {
        const char* line;
        std::vector<std::string> readings;
    };
    for (const Case& c : {
             Case{"Waterloo by ABBA", {"ABBA \u2013 Waterloo"}},
             Case{"Stand By Me by Ben E. King", {"Ben E. King \u2013 Stand By Me"}},
             Case{"Queen - Radio Ga Ga - Remastered 2011",
                  {"Queen \u2013 Radio Ga Ga", "Queen \u2013 Radio Ga Ga (Remastered 2011)"}},
             Case{"Robyn \u2013 Call - Remix", {"Robyn \u2013 Call (Remix)", "Robyn \u2013 Call"}},
             Case{"\"Heroes\" - Bowie - Remix", {"Heroes \u2013 Bowie (Remix)", "Heroes \u2013 Bowie"}},
             Case{"\"Waterloo\" by ABBA", {"ABBA \u2013 Waterloo"}},
             Case{"Waterloo by ABBA - Radio Edit", {"ABBA \u2013 Waterloo"}},
             Case{"ABBA- Waterloo - Radio Edit", {"ABBA \u2013 Waterloo"}},
             Case{"K-Ci & JoJo: All My Life", {"K-Ci & JoJo \u2013 All My Life"}},
             Case{"Queen-Radio Ga Ga", {"Queen \u2013 Radio Ga Ga"}},
         })
        EXPECT_EQ(proposedReadings(c.line, "artist-title"), c.readings) << c.line;
    for (const char* line : {"Stand by me", "Baby", "Jay-Z - Single", "Dinner music:", "Party: late: loud",
                             "A - B - C - D", "Jay-Z-Encore", "Queen - Killed by Death"})
        EXPECT_THAT(proposedReadings(line, "artist-title"), testing::IsEmpty()) << line;
    EXPECT_THAT(proposedReadings("Waterloo by ABBA", "title-artist"), ElementsAre("Waterloo \u2013 ABBA"));
}

TEST(TidyDecisions, AskTheLibraryAboutOtherForms) {
    const LibraryCatalog catalog(buildIndex(
        std::vector{track("Earth, Wind & Fire", "September"), track("Beyonc\u00E9", "Crazy In Love"),
                    track("ABBA", "Waterloo"), track("Simon & Garfunkel", "Cecilia"),
                    track("Simon and Garfunkel", "Cecilia")}));
    const std::string text =
        "ABBA - Waterloo\nEarth, Wind and Fire - September\nBeyonce Feat. Jay-Z - Crazy in love\n"
        "Nobody feat. Him - Nothing\nFernando by ABBA\n"
        "Simon & Garfunkel - Cecilia\nABBA - Waterloo ft. Cher";
    const std::vector<TidyDecision> decisions = tidyDecisions(catalog, text, "artist-title");
    ASSERT_EQ(decisions.size(), 4U);
    EXPECT_THAT(decisions[0].readings, ElementsAre("Earth, Wind & Fire \u2013 September"));
    EXPECT_THAT(decisions[1].readings, ElementsAre("Beyonce \u2013 Crazy in love"));
    EXPECT_THAT(decisions[2].readings, ElementsAre("ABBA \u2013 Fernando"));
    EXPECT_THAT(decisions[3].readings, ElementsAre("ABBA \u2013 Waterloo"));
    EXPECT_THAT(tidyDecisions(catalog, "September - Earth, Wind and Fire", "title-artist").at(0).readings,
                ElementsAre("September \u2013 Earth, Wind & Fire"));
    for (const TidyDecision& decision : decisions)
        EXPECT_EQ(text.substr(decision.offset, decision.line.size()), decision.line);
}

TEST(TidyRules, RemoveOneFlawAndNothingElse) {
    struct Case {
        TidyRule rule;
        std::vector<std::pair<std::string, std::string>> tidied;
        std::vector<std::string> unchanged;
    };
    const Case cases[] = {
        {withPlainBlanks,
         {{"ABBA\u00A0\u2013\u2009Waterloo\u200B", "ABBA \u2013 Waterloo"},
          {"ABBA -\tWaterloo", "ABBA - Waterloo"}},
         {"ABBA - Waterloo"}},
        {withoutEmoji,
         {{"ABBA - Waterloo \U0001F389\U0001F389", "ABBA - Waterloo"},
          {"\u2764\uFE0F ABBA - Waterloo", "ABBA - Waterloo"},
          {"ABBA \U0001F468\u200D\U0001F469 - Waterloo", "ABBA - Waterloo"}},
         {"ABBA - \U0001F389", "\U0001F389", "Artist\u2122 - 10 \u2192 20 # * 7",
          "\u0645\u06CC\u200C\u062E - \u0642"}},
        {withoutBullet,
         {{"\u2022 ABBA - Waterloo", "ABBA - Waterloo"}, {"- ABBA - Waterloo", "ABBA - Waterloo"}},
         {"*NSYNC - Bye Bye Bye", "-M- - Je dis aime", "+44 - When Your Heart Stops Beating", "- "}},
        {withoutQuotationMarks,
         {{"\u201CABBA - Waterloo\u201D", "ABBA - Waterloo"},
          {"ABBA - \"Waterloo\"", "ABBA - Waterloo"},
          {"\u201EABBA\u201C \u2013 \u201EWaterloo\u201C", "ABBA \u2013 Waterloo"}},
         {"'Til Tuesday - Voices Carry", "Queen - 'Heroes' and 'Fools'", "\"Heroes\" - Bowie - Live",
          "New Order - Blue Monday 12\"", "\"Weird Al\" Yankovic - Eat It"}},
        {withoutNote,
         {{"Etta James - At Last (first dance)", "Etta James - At Last"},
          {"ABBA - Waterloo (Please!!)", "ABBA - Waterloo"},
          {"ABBA - Waterloo [MUST PLAY]", "ABBA - Waterloo"},
          {"ABBA - Waterloo ()", "ABBA - Waterloo"}},
         {"ABBA - Waterloo (Extended Mix)", "ABBA - Waterloo (Live)", "Beastie Boys - Fight (For Your Right)",
          "Artist - First Dance", "Artist - (Please)", "(please)", "Artist - Song (please) Remix"}},
        {withDashForTab,
         {{"ABBA\tWaterloo", "ABBA \u2013 Waterloo"}, {"ABBA\t\tWaterloo", "ABBA \u2013 Waterloo"}},
         {"1\tABBA\tWaterloo", "ABBA\t- Waterloo", "ABBA -\tWaterloo", "ABBA - Waterloo\t2:45"}},
        {withSpacedDash,
         {{"ABBA -Waterloo", "ABBA \u2013 Waterloo"},
          {"ABBA- Waterloo", "ABBA \u2013 Waterloo"},
          {"ABBA\u2013Waterloo", "ABBA \u2013 Waterloo"},
          {"ABBA -- Waterloo", "ABBA \u2013 Waterloo"},
          {"Jay-Z -Encore", "Jay-Z \u2013 Encore"}},
         {"ABBA - Waterloo", "ABBA - Take-On\u2013Me", "Jay-Z Encore", "Hits 1990\u20131995", "A - B - C",
          "- ABBA"}},
    };
    for (const auto& [rule, tidied, unchanged] : cases) {
        for (const auto& [line, result] : tidied)
            EXPECT_EQ(rule(line), result) << line;
        for (const std::string& line : unchanged)
            EXPECT_EQ(rule(line), line);
    }
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
             NumberCase{"#9 Dream - Lennon", 9, "Dream - Lennon"}, // depends on the other lines; see TidyText
         }) {
        EXPECT_EQ(numberedLine(c.line).number, c.number) << c.line;
        EXPECT_EQ(numberedLine(c.line).rest, c.rest) << c.line;
    }
    for (const char* name :
         {"50 Cent - In Da Club", "22 - Taylor Swift", "99 Luftballons - Nena", "1999",
          "10cc - I'm Not In Love", "1979. Smashing Pumpkins - Zero", "4.50 from Paddington"}) {
        EXPECT_EQ(numberedLine(name).number, -1) << name;
        EXPECT_EQ(numberedLine(name).rest, name);
    }
}

TEST(LineCheck, NamesEachLineThatIsLeftOut) {
    const std::string text =
        "ABBA - Waterloo\r\n\n  Ceremony:\nA \u2014 B \u2014 C\nRobyn\u00A0- Call\n\u3000Air \u2013 La";
    const LineCheck check = checkLines(text);
    EXPECT_EQ(check.lineCount, 5U);
    EXPECT_EQ(check.readCount(), 2U);
    ASSERT_EQ(check.leftOut.size(), 3U);
    EXPECT_EQ(check.leftOut[0].reason, LeftOutReason::noDash);
    EXPECT_EQ(check.leftOut[1].reason, LeftOutReason::severalDashes);
    EXPECT_EQ(check.leftOut[2].reason, LeftOutReason::unusualBlank);
    for (const LeftOutLine& line : check.leftOut)
        EXPECT_EQ(text.substr(line.offset, line.text.size()), line.text);
}

TEST(LineCheck, CountsInWords) {
    EXPECT_EQ(checkCaption(checkLines("")), "");
    EXPECT_EQ(checkCaption(checkLines(" \n\t")), "");
    EXPECT_EQ(checkCaption(checkLines("A - B")), "1 line: 1 is read, 0 are left out");
    EXPECT_EQ(checkCaption(checkLines("A - B\nC\nD - E")), "3 lines: 2 are read, 1 is left out");
}

class FormatCount : public testing::Test {
protected:
    FormatCounts count(const std::vector<std::string>& lines) const {
        return countFormats(catalog, lines, stop).value();
    }

    LibraryCatalog catalog{buildIndex(std::vector{track("ABBA", "Waterloo"), track("ABBA", "Fernando"),
                                                  track("Robyn", "Call"), track("Air", "La")})};
    std::atomic<bool> stop = false;
};

TEST_F(FormatCount, HintsAtAFormatThatFindsClearlyMore) {
    const FormatCounts counts =
        count({"Waterloo - ABBA", "Fernando - ABBA", "Call - Robyn", "Air - La", "none"});
    EXPECT_EQ(counts.artistFirst, 1U);
    EXPECT_EQ(counts.titleFirst, 3U);
    EXPECT_EQ(formatHint(counts, "artist-title"), "");
    EXPECT_EQ(formatHint({12, 140}, "artist-title"),
              "as Title \u2013 Artist, 140 lines would be found; as Artist \u2013 Title, 12");
    EXPECT_EQ(formatHint({12, 140}, "title-artist"), "");
    EXPECT_EQ(formatHint({9, 2}, "title-artist"),
              "as Artist \u2013 Title, 9 lines would be found; as Title \u2013 Artist, 2");
    EXPECT_EQ(formatHint({100, 120}, "artist-title"), "");
}

TEST_F(FormatCount, StopsWhenAsked) {
    stop = true;
    EXPECT_FALSE(countFormats(catalog, {"ABBA - Waterloo"}, stop));
}

} // namespace
} // namespace orvalen::test
