#pragma once

#include "platform/Console.h"

#include <memory>
#include <thread>

namespace orvalen {

/// Writes lines to a descriptor, by default standard output. A separate thread writes the queue, so that a
/// reader that stops reading (a full pipe, a paused terminal) does not block the caller. If the queue of 1 MB
/// is full, line() waits at most 100 ms and then drops the line. "N lines left out" is written in the place
/// of dropped lines. Lines keep their order. If the reader has closed its end, all lines are lost without an
/// error. Control characters are written as consoleText() says.
class StandardConsole : public Console {
public:
    StandardConsole();
    explicit StandardConsole(int descriptor);
    /// Flushes. A thread that still blocks afterwards is detached and keeps using the descriptor.
    ~StandardConsole() override;
    StandardConsole(const StandardConsole&) = delete;
    StandardConsole& operator=(const StandardConsole&) = delete;

    /// Blocks for at most 100 ms. After a dropped line, drops further lines at once until the reader reads.
    void line(std::string_view text) override;
    /// Waits until all queued lines are written, at most one second.
    void flush();

private:
    class Writer;
    std::shared_ptr<Writer> writer_;
    std::thread thread_;
};

} // namespace orvalen
