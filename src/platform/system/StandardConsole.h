#pragma once

#include "platform/Console.h"

#include <mutex>

namespace orvalen {

/// Writes to a descriptor, standard output unless another is given, without a buffer of its own: a program
/// that is killed has written everything it said. When nobody reads any more, lines are lost silently. A line
/// break within a message becomes a space.
class StandardConsole : public Console {
public:
    StandardConsole();
    explicit StandardConsole(int descriptor) : descriptor_(descriptor) {}
    void line(std::string_view text) override;

private:
    std::mutex mutex_;
    int descriptor_;
};

} // namespace orvalen
