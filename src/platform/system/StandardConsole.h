#pragma once

#include "platform/Console.h"

#include <memory>
#include <thread>

namespace orvalen {

/// Writes to a descriptor, standard output unless another is given. A thread of its own writes what `line`
/// queues, so that a reader who stops reading (a full pipe, a paused terminal) never stops the caller for
/// good: when the queue of one megabyte is full, a line waits at most 100 ms for room and is then left out.
/// In its place the output has a line "N lines left out" once the reader goes on. Lines keep their order.
/// Lines are lost silently when the reader has gone. Control characters are written as `consoleText` says.
class StandardConsole : public Console {
public:
    StandardConsole();
    explicit StandardConsole(int descriptor);
    /// Flushes. A writer that still hangs afterwards is left to itself and keeps using the descriptor.
    ~StandardConsole() override;
    StandardConsole(const StandardConsole&) = delete;
    StandardConsole& operator=(const StandardConsole&) = delete;

    /// Blocks for at most 100 ms, and only once for each time that the reader stops.
    void line(std::string_view text) override;
    /// Waits until everything queued is written, at most one second.
    void flush();

private:
    class Writer;
    std::shared_ptr<Writer> writer_;
    std::thread thread_;
};

} // namespace orvalen
