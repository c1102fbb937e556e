#include "preview/PreviewPlayer.h"

#include "app/state/ContentView.h"
#include "core/Text.h"
#include "platform/Console.h"
#include "platform/FolderAccess.h"
#include "platform/MainQueue.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <utility>

namespace orvalen {
namespace {

constexpr std::chrono::milliseconds tickInterval{10};
constexpr const char* noTime = "0:00";

std::optional<Location> folderOf(const ContentView& view, const Track& track) {
    const std::vector<Location>& folders = view.musicFolderURLs.get();
    const auto found = std::ranges::find_if(
        folders, [&](const Location& folder) { return hasCanonicalPrefix(track.path, folder.path); });
    return found == folders.end() ? std::nullopt : std::optional(*found);
}

void startPlaying(ContentView& view, const Track& track, std::unique_ptr<AudioPlayer> opened) {
    const std::shared_ptr<AudioPlayer> player = std::move(opened);
    view.audioPlayer.set(player);
    view.selectedTrack.set(track);
    player->prepareToPlay();
    player->play();
    view.isPlaying.set(true);
    startPlaybackTimer(view);
    view.peakLevelLeft.set(0);
    view.peakLevelRight.set(0);
}

bool isLoaded(const ContentView& view, const Track& track) {
    return view.audioPlayer.get() && isSameTrack(view.selectedTrack.get(), track);
}

} // namespace

void playPreview(ContentView& view, const Track& track) {
    const auto folder = folderOf(view, track);
    FolderAccess& access = view.platform.folderAccess;
    if (!folder || !access.start(*folder))
        return;
    if (const auto& current = view.audioPlayer.get())
        current->stop();
    view.playbackTimer.set(nullptr);
    auto opened = view.platform.audioPlayers.open(track.path);
    if (opened)
        startPlaying(view, track, std::move(*opened));
    else
        view.platform.console.line("Playback error: " + opened.error().description);
    access.stop(*folder); // the player has opened the file by now
}

void togglePreview(ContentView& view, const Track& track) {
    const auto& current = view.selectedTrack.get();
    if (!current || !isSameTrack(current, track)) {
        playPreview(view, track);
        return;
    }
    const auto& player = view.audioPlayer.get();
    const bool pauses = player && player->isPlaying();
    if (pauses)
        player->pause();
    else if (player)
        player->play();
    view.isPlaying.set(!pauses);
}

void stopPreviewIfCurrent(ContentView& view, const std::optional<Track>& track) {
    if (!isSameTrack(track, view.selectedTrack.get()))
        return;
    if (const auto& player = view.audioPlayer.get())
        player->stop();
    view.isPlaying.set(false);
}

void startPlaybackTimer(ContentView& view) {
    view.playbackTimer.set(nullptr);
    view.playbackTimer.set(
        view.platform.mainQueue.every(tickInterval, [&view] { updatePlaybackProgress(view); }));
}

void updatePlaybackProgress(ContentView& view) {
    const auto& player = view.audioPlayer.get();
    view.playbackProgress.set(player && player->isPlaying() ? playedFraction(*player) : 0.0);
}

void seekPreview(ContentView& view) {
    const auto& player = view.audioPlayer.get();
    if (!player)
        return;
    const double seconds = view.playbackProgress.get() * player->duration();
    if (std::isfinite(seconds))
        player->setCurrentTime(seconds);
}

double playedFraction(const AudioPlayer& player) {
    const double fraction = player.currentTime() / player.duration();
    return std::isfinite(fraction) ? std::clamp(fraction, 0.0, 1.0) : 0.0;
}

std::string formatPlaybackTime(double seconds) {
    constexpr double longest = 1e15; // longer than any file, and still exact in whole seconds
    if (!(seconds >= 0 && seconds <= longest))
        return noTime;
    const auto whole = static_cast<long long>(seconds);
    char text[32];
    std::snprintf(text, sizeof text, "%lld:%02lld", whole / 60, whole % 60);
    return text;
}

std::string positionLabel(const ContentView& view, const Track& track) {
    return isLoaded(view, track) ? formatPlaybackTime(view.audioPlayer.get()->currentTime()) : noTime;
}

std::string lengthLabel(const ContentView& view, const Track& track) {
    return isLoaded(view, track) ? formatPlaybackTime(view.audioPlayer.get()->duration()) : noTime;
}

} // namespace orvalen
