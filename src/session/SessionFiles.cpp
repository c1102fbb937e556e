#include "session/SessionFiles.h"

#include "app/state/ContentView.h"
#include "core/Files.h"
#include "core/Json.h"
#include "library/SupportFolder.h"
#include "platform/Console.h"
#include "platform/Dialogs.h"
#include "platform/MainQueue.h"

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <system_error>
#include <utility>

namespace orvalen {
namespace {

constexpr const char* autoSaveName = "session.orvs";
constexpr const char* previousName = "session.previous.orvs";
constexpr std::chrono::seconds indicatorTime{2};
constexpr std::chrono::hours offerTime{24};

AllowedTypes sessionType() {
    return AllowedTypes{{}, {"orvs"}};
}

Expected<void> writeSession(const ContentView& view, const Location& destination) {
    return writeWholeFile(destination.path, encodeSession(view.matchInput.get(), view.matchedTracks.get()));
}

Expected<MatchSession> readSession(const Location& file) {
    return readWholeFile(file.path).and_then(
        [](std::string bytes) { return decodeSession(std::move(bytes)); });
}

std::optional<MatchSession> readSupportFile(const ContentView& view, const char* name) {
    if (const auto file = supportFileURL(view.platform.userFolders, name))
        if (auto session = readSession(*file))
            return std::move(*session);
    return std::nullopt;
}

void showAutoSaveIndicator(ContentView& view) {
    view.isAutoSaving.set(true);
    view.platform.mainQueue.after(indicatorTime, [&view] { view.isAutoSaving.set(false); });
}

} // namespace

void saveSession(ContentView& view) {
    const auto destination = view.platform.dialogs.chooseToSave(
        SaveOptions{"playlist_session.orvs", {}, {}, sessionType(), FileKind::sessionOrLibrary});
    if (!destination)
        return;
    if (const auto written = writeSession(view, *destination); !written)
        view.platform.console.line("Failed to save session: " + written.error().description);
}

void autoSaveSession(ContentView& view) {
    if (view.matchedTracks.get().empty())
        return;
    const auto file = supportFileURL(view.platform.userFolders, autoSaveName);
    if (!file)
        return;
    if (const auto written = writeSession(view, *file); !written) {
        view.platform.console.line("Auto-save session failed: " + written.error().description);
        return;
    }
    view.platform.console.line("Auto-saving session to " + file->path);
    view.platform.mainQueue.post([&view] { showAutoSaveIndicator(view); });
}

void loadSession(ContentView& view) {
    const auto chosen = view.platform.dialogs.chooseToOpen(
        {.types = sessionType(), .title = "Load Session", .kind = FileKind::sessionOrLibrary});
    if (!chosen.empty())
        loadSessionFile(view, chosen.front());
}

void loadSessionFile(ContentView& view, const Location& file) {
    auto session = readSession(file);
    if (!session) {
        view.platform.console.line("Failed to load session: " + session.error().description);
        return;
    }
    applySession(view, std::move(*session));
}

void loadLastSession(ContentView& view) {
    if (auto session = readSupportFile(view, autoSaveName))
        applySession(view, std::move(*session));
}

void keepReplacedRows(ContentView& view) {
    const std::vector<MatchedTrack>& rows = view.matchedTracks.get();
    const bool hasBrowsedFiles = view.hasBrowsedFiles.get();
    view.hasBrowsedFiles.set(false);
    if (!hasBrowsedFiles && std::ranges::none_of(rows, &MatchedTrack::include))
        return;
    const auto file = supportFileURL(view.platform.userFolders, previousName);
    if (file && writeWholeFile(file->path, encodeSession(view.matchedInput.get(), rows)))
        view.previousSessionIsKept.set(true);
}

void offerPreviousSession(ContentView& view) {
    const auto file = supportFileURL(view.platform.userFolders, previousName);
    std::error_code error;
    if (!file)
        return;
    const auto written = std::filesystem::last_write_time(file->path, error);
    if (!error && std::filesystem::file_time_type::clock::now() - written < offerTime)
        view.previousSessionIsKept.set(true);
}

void loadPreviousSession(ContentView& view) {
    auto session = readSupportFile(view, previousName);
    if (!session)
        return;
    view.previousSessionIsKept.set(false);
    applySession(view, std::move(*session));
}

void applySession(ContentView& view, MatchSession session) {
    keepReplacedRows(view);
    view.matchedInput.set(session.matchInput);
    view.matchInput.set(std::move(session.matchInput));
    view.matchedTracks.set(std::move(session.matchedTracks));
    view.showResultsPage.set(true);
}

} // namespace orvalen
