#include "platform/system/ConsoleLog.h"

#include "core/Excerpt.h"
#include "platform/system/ConsoleText.h"

#include <algorithm>
#include <utility>

namespace orvalen {

void ConsoleLog::line(std::string_view text) {
    next_.line(text);
    std::string shown = consoleText(excerpt(text));
    const std::lock_guard lock(mutex_);
    lines_.push_back(std::move(shown));
    if (lines_.size() > mostLines)
        lines_.pop_front();
    ++count_;
    if (written_)
        written_();
}

std::size_t ConsoleLog::count() const {
    const std::lock_guard lock(mutex_);
    return count_;
}

ConsoleLog::Lines ConsoleLog::linesFrom(std::size_t number) const {
    const std::lock_guard lock(mutex_);
    const std::size_t oldest = count_ - lines_.size();
    const std::size_t first = std::clamp(number, oldest, count_);
    return {first, {lines_.begin() + static_cast<std::ptrdiff_t>(first - oldest), lines_.end()}};
}

void ConsoleLog::observe(std::function<void()> written) {
    const std::lock_guard lock(mutex_);
    written_ = std::move(written);
}

} // namespace orvalen
