#pragma once

#include <string_view>

namespace orvalen {

/// The diagnostic output: one line a message. Any thread; lines never mix.
class Console {
public:
    virtual ~Console() = default;
    virtual void line(std::string_view text) = 0;
};

} // namespace orvalen
