#include "Program.h"
#include "app/OpenedFile.h"
#include "app/state/MainThread.h"
#include "library/SupportFolder.h"
#include "platform/desktop/ApplicationBus.h"
#include "platform/desktop/MpvLibrary.h"
#include "platform/system/InstanceLock.h"

#include <QApplication>
#include <QDir>
#include <QFile>
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

/// If stdin, stdout or stderr is closed, the next opened file would reuse its descriptor and receive console
/// lines.
void fillStandardStreams() {
    int descriptor = 0;
    while (descriptor >= 0 && descriptor <= STDERR_FILENO)
        descriptor = ::open("/dev/null", O_RDWR);
    ::close(descriptor);
}

/// The display connection, sound and files share the process's descriptors, and the display library ends the
/// program if none is left. The usual limit is far below the maximum that a user may set.
void raiseDescriptorLimit() {
    constexpr rlim_t plenty = 65'536;
    rlimit limit{};
    if (::getrlimit(RLIMIT_NOFILE, &limit) != 0 || limit.rlim_cur >= plenty)
        return;
    limit.rlim_cur = std::min(limit.rlim_max, plenty);
    ::setrlimit(RLIMIT_NOFILE, &limit);
}

/// Returns the addresses of the files that the program was started with. File managers name paths or
/// addresses.
QStringList filesToOpen(int argc, char** argv) {
    QStringList uris;
    for (int i = 1; i < argc; ++i)
        if (argv[i][0] != '-' && argv[i - 1][0] != '-') // skips options of Qt and their values
            uris.append(
                QUrl::fromUserInput(QFile::decodeName(argv[i]), QDir::currentPath(), QUrl::AssumeLocalFile)
                    .toString(QUrl::FullyEncoded));
    return uris;
}

/// Shows why the program ends: a second process would overwrite the data files of the first one.
int refuseToStart() {
    constexpr const char* title = "Orvalen is already running";
    std::fprintf(stderr, "%s\n", title);
    QtDialogs().showMessage(title,
                            "It uses the same library and session files. Use its window, or quit it first.");
    return EXIT_FAILURE;
}

/// Passes requests of other programs on, after the library is restored. Then also loads the player.
void serveOnceShown(ApplicationBus& bus, Program& program) {
    QQuickWindow* window = program.window.window();
    const auto raise = [window] { bringToFront(*window); };
    const auto open = [&program](const QString& uri) {
        const QString path = QUrl(uri).toLocalFile();
        openFile(program.view, Location{(path.isEmpty() ? uri : path).toStdString()});
    };
    // The window restores the library at the same signal and was connected first.
    QObject::connect(
        window, &QQuickWindow::frameSwapped, &bus,
        [&bus, raise, open] {
            bus.serve(raise, open);
            MpvLibrary::loadInBackground();
        },
        Qt::ConnectionType(Qt::QueuedConnection | Qt::SingleShotConnection));
}

} // namespace

} // namespace orvalen

int main(int argc, char** argv) {
    using namespace orvalen;

    fillStandardStreams();
    raiseDescriptorLimit();
    // Writing to a closed pipe must return an error instead of ending the program.
    std::signal(SIGPIPE, SIG_IGN);
    // Writing to a file that must not grow must also return an error.
    std::signal(SIGXFSZ, SIG_IGN);

    ApplicationBus bus;
    const QStringList files = filesToOpen(argc, argv);
    const ApplicationBus::Claim claim = bus.claim();
    if (claim == ApplicationBus::Claim::second && bus.activateOwner(files))
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
    if (!files.isEmpty())
        bus.Open(files, {});
    serveOnceShown(bus, program);

    // Skips the destructors: they would wait for workers, and a scan may be blocked by a slow drive.
    const int result = QApplication::exec();
    program.standardOutput.flush();
    std::_Exit(result);
}
