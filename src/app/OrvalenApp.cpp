#include "app/OrvalenApp.h"

#include "app/UpdateCheck.h"
#include "app/state/ContentView.h"
#include "matching/MatchRun.h"
#include "platform/Bundle.h"
#include "platform/Console.h"
#include "platform/MainQueue.h"
#include "platform/UserFolders.h"
#include "session/SessionFiles.h"

#include <chrono>
#include <utility>

namespace orvalen {
namespace {

constexpr std::chrono::seconds autoSaveInterval{30};

} // namespace

std::string infoString(const Bundle& bundle, std::string_view key) {
    return bundle.text(key).value_or("?");
}

TimerHandle installAutoSave(ContentView& view) {
    return view.platform.mainQueue.every(autoSaveInterval, [&view] { autoSaveSession(view); });
}

void contentAppeared(ContentView& view, LibraryReading reading) {
    if (!view.platform.userFolders.applicationSupport())
        view.platform.console.line("No home folder: library, sessions and choices are not saved");
    prepareMatchingOnLibraryChange(view);
    loadPersistentLibrary(view, std::move(reading));
    offerPreviousSession(view);
    const std::string version = infoString(view.platform.bundle, "CFBundleShortVersionString");
    checkForUpdates(view.platform, version, [&view](LatestInfo info) {
        view.remoteInfo.set(std::move(info));
        view.showUpdateAlert.set(true);
    });
}

} // namespace orvalen
