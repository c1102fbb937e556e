#include "export/ExportTargets.h"

#include "app/state/ContentView.h"
#include "core/Uuid.h"
#include "export/PlaylistFile.h"
#include "platform/Console.h"
#include "platform/Dialogs.h"
#include "platform/MainQueue.h"
#include "platform/Notifications.h"

#include <algorithm>
#include <array>
#include <chrono>

namespace orvalen {
namespace {

constexpr std::chrono::seconds bannerTime{2};

constexpr std::string_view rekordbox = "rekordbox";
constexpr std::string_view virtualDJ = "virtualdj";
constexpr std::string_view serato = "serato";

/// Each is also the `value` of its target.
constexpr std::array<std::string_view, 3> plainExtensions{"m3u", "m3u8", "pls"};

constexpr std::string_view plainFailure = "Failed to write playlist file:";

constexpr std::array<ExportTarget, 6> targets{{
    {.label = "M3U", .value = "m3u", .proposedName = "playlist.m3u", .failureLine = plainFailure},
    {.label = "M3U8", .value = "m3u8", .proposedName = "playlist.m3u8", .failureLine = plainFailure},
    {.label = "PLS", .value = "pls", .proposedName = "playlist.pls", .failureLine = plainFailure},
    {.label = "Rekordbox (M3U8)",
     .value = rekordbox,
     .proposedName = "playlist.m3u8",
     .tip = "Tip: In Rekordbox, use File > Import Playlist and choose your exported M3U.",
     .failureLine = plainFailure},
    {.label = "VirtualDJ (M3U)",
     .value = virtualDJ,
     .proposedName = "playlist.m3u",
     .dialogTitle = "Export for VirtualDJ",
     .dialogMessage = "Choose a folder where VirtualDJ will pick up the playlist.",
     .tip = "Tip: Choose a folder where VirtualDJ picks up playlists. Then drag the file into VirtualDJ.",
     .failureLine = "❌ Failed to export VirtualDJ playlist:",
     .successLine = "✅ Exported VirtualDJ playlist to: "},
    {.label = "Serato M3U",
     .value = serato,
     .proposedName = "serato-playlist.m3u",
     .dialogTitle = "Export Serato M3U",
     .dialogMessage = "Choose where to save the M3U file for Serato.",
     .tip = "Tip: Open Serato and drag in your exported M3U file from the Finder.",
     .failureLine = "❌ Failed to export Serato M3U:",
     .successLine = "✅ Exported Serato M3U to: "},
}};

constexpr std::array<HowTo, 2> howToTable{{
    {"How to use in Serato", "Import into Serato",
     "1. Open Serato DJ software.\n"
     "2. Drag the M3U file into the left menu pane of Serato.\n"
     "3. Your playlist is now ready to use in Serato DJ."},
    {"How to use in Rekordbox", "Import into Rekordbox",
     "1. Open Rekordbox software.\n"
     "2. Click File, then Import Playlist.\n"
     "3. Select the M3U file, and click Open.\n"
     "4. Your playlist is now ready to use in Rekordbox."},
}};

void notifyOfExport(Platform& platform) {
    const Notification notification{UUID::random().toString(), "Serato Export",
                                    "Exporting M3U for Serato. You can drag this into Serato DJ."};
    platform.notifications.post(
        notification, [&console = platform.console](const std::optional<Error>& error) {
            if (error)
                console.line("Failed to schedule notification: " + error->description);
        });
}

SaveOptions saveOptions(const ExportTarget& target) {
    return SaveOptions{std::string(target.proposedName), std::string(target.dialogTitle),
                       std::string(target.dialogMessage), AllowedTypes{}};
}

void runExport(ContentView& view, const ExportTarget& target) {
    Platform& platform = view.platform;
    const auto destination = platform.dialogs.chooseToSave(saveOptions(target));
    if (!destination)
        return;
    const auto written = writePlaylistFile(playlistFileText(view.matchedTracks.get()), *destination);
    if (!written) {
        platform.console.line(std::string(target.failureLine) + " " + written.error().description);
        return;
    }
    if (!target.successLine.empty())
        platform.console.line(std::string(target.successLine) + destination->path);
    flashExportBanner(view);
}

} // namespace

std::span<const ExportTarget> exportTargets() {
    return targets;
}

const ExportTarget* exportTarget(std::string_view value) {
    const auto* const found = std::ranges::find(targets, value, &ExportTarget::value);
    return found == targets.end() ? nullptr : found;
}

std::span<const HowTo> howTos() {
    return howToTable;
}

bool canExport(const ContentView& view) {
    return std::ranges::any_of(view.matchedTracks.get(), &MatchedTrack::include);
}

void exportPlaylist(ContentView& view) {
    const std::string format = view.selectedExportFormat.get();
    view.platform.console.line("Exporting format: " + format);
    if (format == virtualDJ)
        exportForVirtualDJ(view);
    else if (format == serato)
        exportForSerato(view);
    else
        exportWithSaveDialog(view, format == rekordbox ? "m3u8" : format);
}

void exportWithSaveDialog(ContentView& view, std::string_view extension) {
    const auto* const found = std::ranges::find(plainExtensions, extension);
    if (found != plainExtensions.end())
        runExport(view, *exportTarget(extension));
}

void exportForVirtualDJ(ContentView& view) {
    runExport(view, *exportTarget(virtualDJ));
}

void exportForSerato(ContentView& view) {
    notifyOfExport(view.platform);
    runExport(view, *exportTarget(serato));
}

void showHowToAlert(ContentView& view, const HowTo& howTo) {
    view.platform.dialogs.showMessage(std::string(howTo.title), std::string(howTo.text));
}

void flashExportBanner(ContentView& view) {
    view.showExportSuccessBanner.set(true);
    view.platform.mainQueue.after(bannerTime, [&view] { view.showExportSuccessBanner.set(false); });
}

} // namespace orvalen
