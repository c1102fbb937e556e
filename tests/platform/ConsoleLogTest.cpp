#include "platform/system/ConsoleLog.h"

#include "support/Fakes.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace orvalen::test {
namespace {

using testing::ElementsAre;

TEST(ConsoleLog, PassesLinesOnAndKeepsTheNewestShortened) {
    FakeConsole next;
    ConsoleLog log(next);
    int calls = 0;
    log.observe([&calls] { ++calls; });
    const std::string longLine(2000, 'x');
    log.line("first");
    log.line(longLine);
    log.line("title \x1B[2J");
    log.observe({});
    log.line("last");
    EXPECT_THAT(next.lines(), ElementsAre("first", longLine, "title \x1B[2J", "last"));
    EXPECT_EQ(calls, 3);
    EXPECT_THAT(log.linesFrom(0).texts,
                ElementsAre("first", std::string(1000, 'x') + "…", "title \\u001B[2J", "last"));
    EXPECT_THAT(log.linesFrom(3).texts, ElementsAre("last"));
    EXPECT_THAT(log.linesFrom(9).texts, ElementsAre());

    for (std::size_t i = 0; i < ConsoleLog::mostLines; ++i)
        log.line("line " + std::to_string(i));
    const auto kept = log.linesFrom(2);
    EXPECT_EQ(kept.first, 4U) << "the oldest are dropped";
    EXPECT_EQ(kept.texts.size(), ConsoleLog::mostLines);
    EXPECT_EQ(kept.texts.front(), "line 0");
    EXPECT_EQ(log.count(), ConsoleLog::mostLines + 4);
}

} // namespace
} // namespace orvalen::test
