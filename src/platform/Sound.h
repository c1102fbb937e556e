#pragma once

#include <string_view>

namespace orvalen {

class Sound {
public:
    virtual ~Sound() = default;
    /// Starts the system sound with the name and returns. Plays nothing if no such sound exists. Main thread.
    virtual void play(std::string_view name) = 0;
};

} // namespace orvalen
