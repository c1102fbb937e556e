#include "platform/system/StandardConsole.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <map>
#include <sstream>
#include <thread>
#include <unistd.h>
#include <utility>
#include <vector>

namespace orvalen::test {
namespace {

struct Pipe {
    Pipe() { EXPECT_EQ(::pipe(ends), 0); }
    ~Pipe() {
        closeReader();
        ::close(ends[1]);
    }
    int writer() const { return ends[1]; }
    void closeReader() { ::close(std::exchange(ends[0], -1)); }
    /// What is there; waits for as much as this.
    std::string read(std::size_t least) {
        std::string text;
        char buffer[4096];
        for (ssize_t got = 1; got > 0 && text.size() < least;) {
            got = ::read(ends[0], buffer, sizeof buffer);
            text.append(buffer, static_cast<std::size_t>(std::max(got, ssize_t{0})));
        }
        return text;
    }

    int ends[2] = {-1, -1};
};

TEST(StandardConsole, WritesEachMessageAsOneLineAtOnce) {
    Pipe pipe;
    StandardConsole console(pipe.writer());
    console.line("✅ Persistent library saved to /home/dj/Größe");
    console.line("");
    console.line("Error: first\nsecond\r\nthird");
    EXPECT_EQ(pipe.read(1), "✅ Persistent library saved to /home/dj/Größe\n\nError: first second  third\n");
}

TEST(StandardConsole, LinesOfSeveralThreadsNeverMix) {
    constexpr std::size_t lines = 200;
    constexpr std::size_t length = 5000; // longer than a pipe writes in one piece
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

TEST(StandardConsole, SurvivesAReaderThatHasGone) {
    Pipe pipe;
    pipe.closeReader();
    StandardConsole console(pipe.writer());
    console.line("nobody reads this");
    console.line("nor this");
}

} // namespace
} // namespace orvalen::test
