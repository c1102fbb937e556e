#pragma once

#include "core/Track.h"

#include <optional>
#include <string>

namespace orvalen {

struct ContentView;

// The one preview player. Main thread. Two tracks are the same when their paths are equal.

void playPreview(ContentView& view, const Track& track);
/// The play button: pauses or resumes the previewed track, starts any other.
void togglePreview(ContentView& view, const Track& track);
/// Stops when the track is the previewed one; both absent count as that.
void stopPreviewIfCurrent(ContentView& view, const std::optional<Track>& track);
void startPlaybackTimer(ContentView& view);
void updatePlaybackProgress(ContentView& view);
/// Moves the player to the slider's place.
void seekPreview(ContentView& view);

/// Whether the track's button reads "Pause".
bool showsPause(const ContentView& view, const std::optional<Track>& track);
/// ‘1:01’ for 61 seconds, cut to a whole number.
std::string formatPlaybackTime(double seconds);
/// The position and length labels; "0:00" unless the track is the previewed one.
std::string positionLabel(const ContentView& view, const Track& track);
std::string lengthLabel(const ContentView& view, const Track& track);

} // namespace orvalen
