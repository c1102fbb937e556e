#include "Program.h"
#include "app/OpenedFile.h"
#include "app/state/MainThread.h"
#include "library/SupportFolder.h"
#include "platform/desktop/ApplicationBus.h"
#include "platform/system/InstanceLock.h"

#include <QApplication>
#include <QQuickWindow>
#include <QUrl>
#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <sys/resource.h>
#include <unistd.h>

namespace orvalen {

namespace {

/// Where a standard stream is closed, the next file to be opened would take its number, and be written
/// console lines.
void fillStandardStreams() {
    int descriptor = 0;
    while (descriptor >= 0 && descriptor <= STDERR_FILENO)
        descriptor = ::open("/dev/null", O_RDWR);
    ::close(descriptor);
}

/// Display, sound and files share the process's descriptors: without one left, the display ends the program.
/// The limit that a user may set is mostly far above the usual one.
void raiseDescriptorLimit() {
    constexpr rlim_t plenty = 65'536;
    rlimit limit{};
    if (::getrlimit(RLIMIT_NOFILE, &limit) != 0 || limit.rlim_cur >= plenty)
        return;
    limit.rlim_cur = std::min(limit.rlim_max, plenty);
    ::setrlimit(RLIMIT_NOFILE, &limit);
}

/// A second process on the same data files would overwrite what the first one writes.
int refuseToStart() {
    constexpr const char* title = "Orvalen is already running";
    std::fprintf(stderr, "%s\n", title);
    QtDialogs().showMessage(title,
                            "It uses the same library and session files. Go on there, or quit it first.");
    return EXIT_FAILURE;
}

/// Passes the requests of other programs on, once the library is restored.
void serveOnceShown(ApplicationBus& bus, Program& program) {
    QQuickWindow* window = program.window.window();
    const auto raise = [window] { bringToFront(*window); };
    const auto open = [&program](const QString& uri) {
        const QString path = QUrl(uri).toLocalFile();
        openFile(program.view, Location{(path.isEmpty() ? uri : path).toStdString()});
    };
    // The window restores the library at the same signal and was connected first.
    QObject::connect(
        window, &QQuickWindow::frameSwapped, &bus, [&bus, raise, open] { bus.serve(raise, open); },
        Qt::ConnectionType(Qt::QueuedConnection | Qt::SingleShotConnection));
}

} // namespace

} // namespace orvalen

int main(int argc, char** argv) {
    using namespace orvalen;

    fillStandardStreams();
    raiseDescriptorLimit();
    // A reader of our output that goes away must not take the program with it.
    std::signal(SIGPIPE, SIG_IGN);
    // Nor must a file that may not grow any further: the write says so.
    std::signal(SIGXFSZ, SIG_IGN);

    ApplicationBus bus;
    const ApplicationBus::Claim claim = bus.claim();
    if (claim == ApplicationBus::Claim::second && bus.activateOwner())
        return EXIT_SUCCESS;
    const auto lockFile = supportFileURL(XdgUserFolders(), "instance.lock");
    const std::optional<InstanceLock> lock =
        lockFile ? std::make_optional<InstanceLock>(lockFile->path) : std::nullopt;

    QGuiApplication::setDesktopFileName("org.orvalen.Orvalen");
    const QApplication application(argc, argv);
    if (claim == ApplicationBus::Claim::second || (lock && lock->heldByAnother()))
        return refuseToStart();
    becomeMainThread();
    Program program;
    program.window.show();
    serveOnceShown(bus, program);

    // Quitting waits for no worker: a scan of a slow drive may be in the middle of a file.
    const int result = QApplication::exec();
    program.standardOutput.flush();
    std::_Exit(result);
}
