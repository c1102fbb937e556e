#pragma once

#include "platform/Console.h"

#include <cstddef>
#include <deque>
#include <functional>
#include <mutex>
#include <string>
#include <vector>

namespace orvalen {

/// A console that passes every line on to another one and keeps the newest 5,000 for the window to show, each
/// with its first 1,000 characters. Thread-safe.
class ConsoleLog : public Console {
public:
    static constexpr std::size_t mostLines = 5000;

    explicit ConsoleLog(Console& next) : next_(next) {}
    void line(std::string_view text) override;

    /// How many lines were written since the start; the next line gets this number.
    std::size_t count() const;

    struct Lines {
        std::size_t first; ///< the number of the first one
        std::vector<std::string> texts;
    };
    /// The lines from this number on, or from the oldest one that is kept.
    Lines linesFrom(std::size_t number) const;

    /// Calls the function after each line, on the thread that wrote it; it must not call the log. An empty
    /// function ends that, and none runs once this has returned.
    void observe(std::function<void()> written);

private:
    Console& next_;
    mutable std::mutex mutex_; ///< guards everything below
    std::deque<std::string> lines_;
    std::size_t count_ = 0;
    std::function<void()> written_;
};

} // namespace orvalen
