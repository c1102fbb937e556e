#include "platform/system/ConsoleLog.h"

#include "platform/system/StandardConsole.h"
#include "support/Fakes.h"

#include <algorithm>
#include <chrono>
#include <fcntl.h>
#include <gmock/gmock.h>
#include <map>
#include <sstream>
#include <sys/ioctl.h>
#include <thread>
#include <unistd.h>
#include <utility>
#include <vector>

namespace orvalen::test {
namespace {

using testing::ElementsAre;
using namespace std::chrono_literals;

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

using Clock = std::chrono::steady_clock;

struct Pipe {
    Pipe() { EXPECT_EQ(::pipe(ends), 0); }
    ~Pipe() {
        closeReader();
        ::close(ends[1]);
    }
    int writer() const { return ends[1]; }
    void closeReader() { ::close(std::exchange(ends[0], -1)); }
    /// Fills the pipe, so that the next write blocks. Returns the number of bytes written.
    std::size_t fill() {
        ::fcntl(ends[1], F_SETFL, O_NONBLOCK);
        std::size_t written = 0;
        while (::write(ends[1], "x", 1) == 1)
            ++written;
        ::fcntl(ends[1], F_SETFL, 0);
        return written;
    }
    /// Reads at least `least` bytes, waiting for them.
    std::string read(std::size_t least) {
        std::string text;
        char buffer[4096];
        for (ssize_t got = 1; got > 0 && text.size() < least;) {
            got = ::read(ends[0], buffer, sizeof buffer);
            text.append(buffer, static_cast<std::size_t>(std::max(got, ssize_t{0})));
        }
        return text;
    }
    std::string readUntil(std::string_view end) {
        std::string text = read(1);
        while (text.find(end) == std::string::npos)
            text += read(1);
        return text;
    }

    int ends[2] = {-1, -1};
};

TEST(StandardConsole, WritesEachMessageAsOneLine) {
    const struct {
        std::string_view message;
        std::string_view line;
    } cases[] = {
        {"✅ Persistent library saved to /home/dj/Größe", "✅ Persistent library saved to /home/dj/Größe\n"},
        {"", "\n"},
        {"Error: first\nsecond\r\nthird", "Error: first second  third\n"},
        {"tab\tstays, \x1B[2J and \x07 and \x7F do not",
         "tab\tstays, \\u001B[2J and \\u0007 and \\u007F do not\n"},
        {"\u009B31m, \u0085, but \u00A0 and é", "\\u009B31m, \\u0085, but \u00A0 and é\n"},
        {"raw \x9B"
         "31m",
         "raw \uFFFD31m\n"},
    };
    Pipe pipe;
    StandardConsole console(pipe.writer());
    for (const auto& c : cases) {
        console.line(c.message);
        EXPECT_EQ(pipe.read(c.line.size()), c.line);
    }
}

TEST(StandardConsole, LinesOfSeveralThreadsNeverMix) {
    constexpr std::size_t lines = 50;    // all fit into the queue
    constexpr std::size_t length = 5000; // longer than one atomic write to a pipe
    Pipe pipe;
    StandardConsole console(pipe.writer());
    std::vector<std::jthread> writers;
    for (const char letter : {'a', 'b', 'c'})
        writers.emplace_back([&console, letter] {
            for (std::size_t i = 0; i < lines; ++i)
                console.line(std::string(length, letter));
        });

    std::istringstream stream(pipe.read(writers.size() * lines * (length + 1)));
    std::map<std::string, std::size_t> counts;
    for (std::string line; std::getline(stream, line);)
        ++counts[line];
    EXPECT_EQ(counts.size(), 3U);
    for (const auto& [line, count] : counts)
        EXPECT_EQ(count, lines) << line.substr(0, 10);
}

TEST(StandardConsole, WritesTheRestOfALineOfWhichANonBlockingPipeTookAPart) {
    Pipe pipe;
    const std::size_t filled = pipe.fill();
    ::fcntl(pipe.writer(), F_SETFL, O_NONBLOCK);
    std::string text = pipe.read(1); // makes room for a part of the next write
    const std::string line(200'000, 'x');
    StandardConsole console(pipe.writer());
    console.line(line);
    for (int queued = 0; static_cast<std::size_t>(queued) < filled; std::this_thread::yield())
        ::ioctl(pipe.ends[0], FIONREAD, &queued);
    text += pipe.readUntil("\n");
    EXPECT_EQ(text.substr(filled), line + '\n');
}

TEST(StandardConsole, LeavesOutTheNewestLinesWhileNobodyReads) {
    constexpr int lines = 2000;
    Pipe pipe;
    const std::size_t filled = pipe.fill();
    StandardConsole console(pipe.writer());
    const auto start = Clock::now();
    for (int i = 0; i < lines; ++i)
        console.line(std::to_string(i) + std::string(1000, '.'));
    // Waiting for each of the 900 lines that do not fit would take 90 seconds.
    EXPECT_LT(Clock::now() - start, 10s) << "the caller waits once";

    std::istringstream stream(pipe.readUntil("left out\n").substr(filled));
    int kept = 0;
    std::string line;
    while (std::getline(stream, line) && line == std::to_string(kept) + std::string(1000, '.'))
        ++kept;
    EXPECT_GT(kept, 900) << "a megabyte is queued";
    EXPECT_EQ(line, std::to_string(lines - kept) + " lines left out");
    EXPECT_FALSE(std::getline(stream, line));
    console.line("afterwards");
    EXPECT_EQ(pipe.readUntil("\n"), "afterwards\n");
}

TEST(StandardConsole, WritesTheQueueAtTheEndButNeverWaitsLongForIt) {
    Pipe pipe;
    const std::size_t filled = pipe.fill();
    auto console = std::make_unique<StandardConsole>(pipe.writer());
    console->line("queued");
    {
        const std::jthread reader([&] {
            std::this_thread::sleep_for(50ms);
            EXPECT_EQ(pipe.read(filled + 7).substr(filled), "queued\n");
        });
        console->flush();
    }
    pipe.fill();
    console->line("stuck");
    const auto start = Clock::now();
    console.reset();
    EXPECT_LT(Clock::now() - start, 10s);
    pipe.readUntil("stuck\n"); // the writer thread still uses the pipe
}

TEST(StandardConsole, SurvivesAReaderThatHasGone) {
    Pipe pipe;
    pipe.closeReader();
    StandardConsole console(pipe.writer());
    console.line("nobody reads this");
    console.line("nor this");
    console.flush();
}

} // namespace
} // namespace orvalen::test
