#include "app/window/bridge/PreviewState.h"

#include "app/window/bridge/QtText.h"
#include "app/window/bridge/TextDirection.h"
#include "platform/AudioPlayer.h"
#include "preview/PreviewPlayer.h"

#include <algorithm>
#include <cmath>

namespace orvalen {
namespace {

constexpr int labelInterval = 200; // milliseconds

} // namespace

PreviewState::PreviewState(ContentView& view, ChangeNotifier& notifier) : StateProperties(view, notifier) {
    follow(view.audioPlayer, view.selectedTrack, view.showResultsPage, view.isPlaying, view.playbackTimer);
    observe(view.playbackProgress, [this, &view] {
        if (view.showResultsPage.get() && !(place() == shown_))
            markDirty();
    });
    shown_ = place();
    labels_.setInterval(labelInterval);
    connect(&labels_, &QTimer::timeout, this, [this] {
        if (!(place() == shown_))
            refresh();
    });
}

void PreviewState::refresh() {
    shown_ = place();
    if (!playsWithoutTimer())
        labels_.stop();
    else if (!labels_.isActive())
        labels_.start();
    emit changed();
}

bool PreviewState::playsWithoutTimer() const {
    return view().showResultsPage.get() && view().audioPlayer.get() && view().isPlaying.get() &&
           !view().playbackTimer.get();
}

PreviewState::Place PreviewState::place() const {
    const auto& player = view().audioPlayer.get();
    const bool hasTimer = static_cast<bool>(view().playbackTimer.get());
    const double played = player && !hasTimer ? playedFraction(*player) : view().playbackProgress.get();
    return {static_cast<int>(std::lround(played * std::max(1, steps_))),
            player ? static_cast<long long>(player->currentTime()) : 0};
}

QString PreviewState::title() const {
    const auto& track = view().selectedTrack.get();
    return track ? directedPath("Now Playing: " + toShownText(track->path)) : QString();
}

double PreviewState::progress() const {
    return static_cast<double>(shown_.step) / std::max(1, steps_);
}

QString PreviewState::position() const {
    const auto& track = view().selectedTrack.get();
    return track ? toQString(positionLabel(view(), *track)) : QString();
}

QString PreviewState::length() const {
    const auto& track = view().selectedTrack.get();
    return track ? toQString(lengthLabel(view(), *track)) : QString();
}

void PreviewState::seekTo(double progress) {
    // A progress update may have overwritten the field since the slider moved.
    moveTo(progress);
    seekPreview(view());
}

void PreviewState::stepBy(double share) {
    const auto& player = view().audioPlayer.get();
    if (player && player->duration() > 0)
        seekTo(std::clamp(player->currentTime() / player->duration() + share, 0.0, 1.0));
}

void PreviewState::seekBySeconds(double seconds) {
    const auto& player = view().audioPlayer.get();
    if (player && player->duration() > 0)
        stepBy(seconds / player->duration());
}

} // namespace orvalen
