#pragma once

#include "app/state/ContentView.h"
#include "app/window/MainWindow.h"
#include "library/PlaylistDatabaseManager.h"
#include "library/SupportFolder.h"
#include "platform/desktop/BuildBundle.h"
#include "platform/desktop/DBusNotifications.h"
#include "platform/desktop/MpvAudioPlayers.h"
#include "platform/desktop/PlayerSound.h"
#include "platform/desktop/QtBrowser.h"
#include "platform/desktop/QtDialogs.h"
#include "platform/desktop/QtHttpSession.h"
#include "platform/desktop/QtMainQueue.h"
#include "platform/system/ConsoleLog.h"
#include "platform/system/MountWatch.h"
#include "platform/system/PosixFolderAccess.h"
#include "platform/system/StandardConsole.h"
#include "platform/system/ThreadWorkerQueue.h"
#include "platform/system/XdgUserFolders.h"
#include "platform/tags/FileMediaAssets.h"

namespace orvalen {

/// All objects of the program: the services of the desktop, the state that uses them, and the window that
/// shows the state. Main thread; needs a QApplication.
struct Program {
    StandardConsole standardOutput;
    ConsoleLog console{standardOutput};
    QtMainQueue mainQueue;
    ThreadWorkerQueue matchQueue;
    ThreadWorkerQueue tagQueue;
    XdgUserFolders userFolders;
    QtDialogs dialogs{supportFileURL(userFolders, "dialogs.ini").value_or(Location()).path};
    FileMediaAssets mediaAssets;
    MpvAudioPlayers audioPlayers;
    PosixFolderAccess folderAccess;
    DBusNotifications notifications;
    QtHttpSession httpSession;
    PlayerSound sound;
    QtBrowser browser;
    BuildBundle bundle;
    MountWatch driveWatch{mainQueue};

    Platform platform{console,     mainQueue,    matchQueue,   tagQueue,    dialogs,
                      mediaAssets, audioPlayers, folderAccess, userFolders, notifications,
                      httpSession, sound,        browser,      bundle,      driveWatch};
    ContentView view{platform, [this]() -> PlaylistDatabaseManager& {
                         return PlaylistDatabaseManager::shared(userFolders, console);
                     }};
    MainWindow window{view, console};
};

} // namespace orvalen
