#pragma once

#include <string_view>

namespace orvalen {

/// The diagnostic output: one line for each message. Thread-safe; lines never mix. A line may be written
/// after the call has returned, and may be lost when nobody reads the output.
class Console {
public:
    virtual ~Console() = default;
    virtual void line(std::string_view text) = 0;
};

} // namespace orvalen
