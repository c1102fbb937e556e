#include "platform/system/StandardConsole.h"

#include <array>
#include <gtest/gtest.h>
#include <map>
#include <sstream>
#include <thread>
#include <unistd.h>
#include <utility>
#include <vector>

namespace orvalen::test {
namespace {

/// A pipe whose reading end can be closed early.
class Pipe {
public:
    Pipe() { EXPECT_EQ(::pipe(ends_.data()), 0); }
    ~Pipe() {
        closeEnd(0);
        closeEnd(1);
    }
    int writer() const { return ends_[1]; }
    void closeReader() { closeEnd(0); }
    void closeWriter() { closeEnd(1); }
    /// What is there, or all that comes until the writer is closed.
    std::string read(bool toTheEnd) {
        std::string text;
        std::array<char, 4096> buffer{};
        ssize_t got = 0;
        do {
            got = ::read(ends_[0], buffer.data(), buffer.size());
            if (got > 0)
                text.append(buffer.data(), static_cast<std::size_t>(got));
        } while (toTheEnd && got > 0);
        return text;
    }

private:
    void closeEnd(std::size_t end) {
        if (ends_[end] >= 0)
            ::close(std::exchange(ends_[end], -1));
    }
    std::array<int, 2> ends_{-1, -1};
};

TEST(StandardConsole, WritesEachMessageAsOneLineAtOnce) {
    Pipe pipe;
    StandardConsole console(pipe.writer());
    console.line("✅ Persistent library saved to /home/dj/Größe");
    EXPECT_EQ(pipe.read(false), "✅ Persistent library saved to /home/dj/Größe\n");
    console.line("");
    console.line("Error: first\nsecond\r\nthird");
    EXPECT_EQ(pipe.read(false), "\nError: first second  third\n");
}

TEST(StandardConsole, LinesOfSeveralThreadsNeverMix) {
    constexpr int lines = 200;
    Pipe pipe;
    std::string text;
    std::thread reader([&] { text = pipe.read(true); });
    {
        StandardConsole console(pipe.writer());
        std::vector<std::jthread> writers;
        for (const char letter : {'a', 'b', 'c'})
            writers.emplace_back([&console, letter] {
                for (int i = 0; i < lines; ++i)
                    console.line(std::string(5000, letter)); // longer than a pipe writes in one piece
            });
    }
    pipe.closeWriter();
    reader.join();

    std::map<std::string, int> counts;
    std::istringstream stream(text);
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
