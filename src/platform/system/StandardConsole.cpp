#include "platform/system/StandardConsole.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <ctime>
#include <string>
#include <unistd.h>

namespace orvalen {
namespace {

/// Keeps the signal of a closed pipe from this thread. One that arose meanwhile is taken back, unless it was
/// waiting already; the rest of the program, and what it starts, keep their own ways with the signal.
class WithoutPipeSignal {
public:
    WithoutPipeSignal() {
        sigset_t waiting;
        sigemptyset(&waiting);
        sigpending(&waiting);
        wasWaiting_ = sigismember(&waiting, SIGPIPE) == 1;
        sigemptyset(&pipeSignal_);
        sigaddset(&pipeSignal_, SIGPIPE);
        pthread_sigmask(SIG_BLOCK, &pipeSignal_, &before_);
    }
    ~WithoutPipeSignal() {
        const timespec atOnce{};
        if (!wasWaiting_)
            sigtimedwait(&pipeSignal_, nullptr, &atOnce);
        pthread_sigmask(SIG_SETMASK, &before_, nullptr);
    }
    WithoutPipeSignal(const WithoutPipeSignal&) = delete;
    WithoutPipeSignal& operator=(const WithoutPipeSignal&) = delete;

private:
    sigset_t pipeSignal_{};
    sigset_t before_{};
    bool wasWaiting_ = false;
};

} // namespace

StandardConsole::StandardConsole() : StandardConsole(STDOUT_FILENO) {}

void StandardConsole::line(std::string_view text) {
    std::string bytes(text);
    std::replace_if(
        bytes.begin(), bytes.end(), [](char c) { return c == '\n' || c == '\r'; }, ' ');
    bytes += '\n';

    const std::lock_guard lock(mutex_);
    const WithoutPipeSignal guard;
    for (std::string_view rest = bytes; !rest.empty();) {
        const ssize_t written = ::write(descriptor_, rest.data(), rest.size());
        if (written < 0 && errno == EINTR)
            continue;
        if (written < 0)
            return;
        rest.remove_prefix(static_cast<std::size_t>(written));
    }
}

} // namespace orvalen
