#include "Program.h"
#include "app/state/MainThread.h"

#include <QApplication>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <unistd.h>

namespace {

/// Where a standard stream is closed, the next file to be opened would take its number, and be written
/// console lines.
void fillStandardStreams() {
    int descriptor = 0;
    while (descriptor >= 0 && descriptor <= STDERR_FILENO)
        descriptor = ::open("/dev/null", O_RDWR);
    ::close(descriptor);
}

} // namespace

int main(int argc, char** argv) {
    using namespace orvalen;

    fillStandardStreams();
    // A reader of our output that goes away must not take the program with it.
    std::signal(SIGPIPE, SIG_IGN);
    // Nor must a file that may not grow any further: the write says so.
    std::signal(SIGXFSZ, SIG_IGN);

    const QApplication application(argc, argv);
    becomeMainThread();
    Program program;
    program.window.show();

    // Quitting writes nothing and waits for nothing: a scan of a slow drive may be in the middle of a file.
    std::_Exit(QApplication::exec());
}
