#pragma once

#include <string_view>

namespace orvalen {

/// The diagnostic output: one line per message. Thread-safe; lines are never mixed. line() may return before
/// the line is written. Lines can be lost if nobody reads the output.
class Console {
public:
    virtual ~Console() = default;
    virtual void line(std::string_view text) = 0;
};

} // namespace orvalen
