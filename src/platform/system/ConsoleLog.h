#pragma once

#include "platform/Console.h"

#include <cstddef>
#include <deque>
#include <functional>
#include <mutex>
#include <string>
#include <vector>

namespace orvalen {

/// Passes every line on to another console, and keeps the newest 5,000 lines for the window, each with its
/// first 1,000 characters. Thread-safe.
class ConsoleLog : public Console {
public:
    static constexpr std::size_t mostLines = 5000;

    explicit ConsoleLog(Console& next) : next_(next) {}
    void line(std::string_view text) override;

    /// Returns the number of lines written since the start. The next line gets this number.
    std::size_t count() const;

    struct Lines {
        std::size_t first; ///< number of the first line
        std::vector<std::string> texts;
    };
    /// Returns the lines from line `number` on. Lines that are no longer kept are missing.
    Lines linesFrom(std::size_t number) const;

    /// Replaces the observer. It is called after each line, on the thread that wrote the line, and must not
    /// call the log. An empty function removes the observer: when observe() returns, no call is running.
    void observe(std::function<void()> written);

private:
    Console& next_;
    mutable std::mutex mutex_; ///< guards everything below
    std::deque<std::string> lines_;
    std::size_t count_ = 0;
    std::function<void()> written_;
};

} // namespace orvalen
