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
    /// Returns the lines from the number on, or from the oldest one that is kept.
    Lines linesFrom(std::size_t number) const;

    /// Calls the function after each line, on the thread that wrote the line. The function must not call the
    /// log. An empty function stops the calls; none is running when this call returns.
    void observe(std::function<void()> written);

private:
    Console& next_;
    mutable std::mutex mutex_; ///< guards everything below
    std::deque<std::string> lines_;
    std::size_t count_ = 0;
    std::function<void()> written_;
};

} // namespace orvalen
