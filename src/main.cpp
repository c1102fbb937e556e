#include "app/ContentView.h"
#include "app/window/MainWindow.h"
#include "library/PlaylistDatabaseManager.h"
#include "platform/desktop/BuildBundle.h"
#include "platform/desktop/DBusNotifications.h"
#include "platform/desktop/MpvAudioPlayers.h"
#include "platform/desktop/PlayerSound.h"
#include "platform/desktop/QtBrowser.h"
#include "platform/desktop/QtDialogs.h"
#include "platform/desktop/QtHttpSession.h"
#include "platform/desktop/QtMainQueue.h"
#include "platform/desktop/TagLibMediaAssets.h"
#include "platform/system/PosixFolderAccess.h"
#include "platform/system/StandardConsole.h"
#include "platform/system/ThreadWorkerQueue.h"
#include "platform/system/XdgUserFolders.h"

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

    StandardConsole console;
    QtMainQueue mainQueue;
    ThreadWorkerQueue matchQueue;
    ThreadWorkerQueue tagQueue;
    QtDialogs dialogs;
    TagLibMediaAssets mediaAssets;
    MpvAudioPlayers audioPlayers;
    PosixFolderAccess folderAccess;
    XdgUserFolders userFolders;
    DBusNotifications notifications;
    QtHttpSession httpSession;
    PlayerSound sound;
    QtBrowser browser;
    BuildBundle bundle;

    Platform platform{console,     mainQueue,    matchQueue,   tagQueue,    dialogs,
                      mediaAssets, audioPlayers, folderAccess, userFolders, notifications,
                      httpSession, sound,        browser,      bundle};
    ContentView view(platform, [&]() -> PlaylistDatabaseManager& {
        return PlaylistDatabaseManager::shared(userFolders, console);
    });
    MainWindow window(view);
    window.show();

    // Quitting writes nothing and waits for nothing: a scan of a slow drive may be in the middle of a file.
    std::_Exit(QApplication::exec());
}
