#pragma once

namespace orvalen {

class AudioPlayers;
class Browser;
class Bundle;
class Console;
class Dialogs;
class DriveWatch;
class FolderAccess;
class HttpSession;
class MainQueue;
class MediaAssets;
class Notifications;
class Sound;
class UserFolders;
class WorkerQueue;

/// References to all services of the operating system and desktop. src/Program.h or a test fills it in. The
/// services must outlive the state.
struct Platform {
    Console& console;
    MainQueue& mainQueue;
    WorkerQueue& matchQueue; ///< match runs, searches, catalogs
    WorkerQueue& tagQueue;   ///< folder walks and tag reads
    Dialogs& dialogs;
    MediaAssets& mediaAssets;
    AudioPlayers& audioPlayers;
    FolderAccess& folderAccess;
    UserFolders& userFolders;
    Notifications& notifications;
    HttpSession& httpSession;
    Sound& sound;
    Browser& browser;
    Bundle& bundle;
    DriveWatch& driveWatch;
};

} // namespace orvalen
