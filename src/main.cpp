#include "Program.h"
#include "app/MainThread.h"

#include <QApplication>
#include <csignal>
#include <cstdlib>

int main(int argc, char** argv) {
    using namespace orvalen;

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
