#include "import/DjepImport.h"

#include "support/TestPlatform.h"

#include <gmock/gmock.h>

namespace orvalen::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(DjepImport, TurnsRowsIntoWantedLines) {
    struct Case {
        const char* quirk;
        std::string csv;
        const char* wanted;
    };
    const std::string header = "Request Type,Title,Artist\n";
    const Case cases[] = {
        {"rows in file order, twins kept", header + "x,B,b\nx,A,a\nx,B,b", "b - B\na - A\nb - B"},
        {"any header is skipped, even one like a row", "x,Title,Artist\nx,T,A", "A - T"},
        {"a byte-order mark stands in the header", "\xEF\xBB\xBFx,h,h\nx,T,A", "A - T"},
        {"carriage returns alone separate nothing", "x,h,h\rx,T,A\rx,U,B", ""},
        {"quotation marks inside", header + "x,The \"Best\" Of,\"A\" B", "A B - The Best Of"},
        {"blanks inside quotation marks stay", header + "x,\" T \",\" A\"", " A -  T "},
        {"blanks outside go", header + "x,\t T \xC2\xA0, A ,z", "A - T"},
        {"a comma inside quotation marks separates", header + "x,\"One, Two\",A", "Two - One"},
        {"an empty kind is kept", header + ",T,A", "A - T"},
        {"two fields are no row", header + "x,T\nx,T,A", "A - T"},
        {"an empty title or artist", header + "x,,A\nx,T,\nx, ,A\nx,\"\",A\nx,T,\"\"\nx,T,A", "A - T"},
        {"blank lines", header + "\n \n,,\n\nx,T,A\n\n", "A - T"},
        {"nothing", "", ""},
    };
    for (const Case& c : cases)
        EXPECT_EQ(wantedTextOfDJEP(c.csv, true), c.wanted) << c.quirk;
}

TEST(DjepImport, LeavesOutWhatMustNotBePlayedOnlyWhenAsked) {
    const auto wanted = [](const std::string& kind, bool ignore) {
        return wantedTextOfDJEP("header\n" + kind + ",T,A", ignore);
    };
    for (const char* kind : {"Do Not Play", "Please do NOT play!", "Do \"Not\" Play", "É Do Not Play"}) {
        EXPECT_EQ(wanted(kind, true), "") << kind;
        EXPECT_EQ(wanted(kind, false), "A - T") << kind;
    }
    EXPECT_EQ(wanted("Do Nöt Play", true), "A - T");
    EXPECT_EQ(wantedTextOfDJEP("h\nx,Do Not Play,Do Not Play", true), "Do Not Play - Do Not Play");
}

class DjepFile : public testing::Test {
protected:
    DjepFile() {
        test.view.matchInput.set("typed");
        test.view.inputMode.set(InputMode::djep);
    }

    TestPlatform test;
    TemporaryFolder folder;
};

TEST_F(DjepFile, ReplacesTheWantedTextAndShowsTheListUnlessItIsNoText) {
    parseDJEPCSV(test.view, {folder.write("latin1.csv", "h\nx,F\xFC\xFCr,A")});
    EXPECT_EQ(test.view.matchInput.get(), "typed");
    EXPECT_EQ(test.view.inputMode.get(), InputMode::djep);
    EXPECT_THAT(test.console.lines(), ElementsAre("Failed to parse DJEP CSV: The file is not UTF-8 text."));

    parseDJEPCSV(test.view, {folder.write("requests.csv", "h\nDo Not Play,T,A\nx,U,B\n")});
    EXPECT_EQ(test.view.matchInput.get(), "B - U");
    EXPECT_EQ(test.view.inputMode.get(), InputMode::textList);
    EXPECT_FALSE(test.view.isMatching.get());

    test.view.ignoreDoNotPlay.set(false);
    parseDJEPCSV(test.view, {folder.path("requests.csv")});
    EXPECT_EQ(test.view.matchInput.get(), "A - T\nB - U");
}

TEST_F(DjepFile, IsAskedForWithoutBlocking) {
    const std::string path = folder.write("requests.csv", "h\nx,T,A");
    importDJEPCSV(test.view);
    ASSERT_EQ(test.dialogs.opened.size(), 1U);
    const OpenOptions& options = test.dialogs.opened.front();
    EXPECT_TRUE(options.files && !options.folders && !options.several);
    EXPECT_THAT(options.types.families, ElementsAre(TypeFamily::commaSeparatedText));
    EXPECT_THAT(options.types.extensions, IsEmpty());
    EXPECT_EQ(options.prompt, "");
    EXPECT_EQ(test.view.matchInput.get(), "typed");

    test.dialogs.answerLater({}); // cancelled
    EXPECT_EQ(test.view.inputMode.get(), InputMode::djep);

    importDJEPCSV(test.view);
    test.dialogs.answerLater({path});
    EXPECT_EQ(test.view.matchInput.get(), "A - T");
}

} // namespace
} // namespace orvalen::test
