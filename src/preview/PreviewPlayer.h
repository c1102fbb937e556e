#pragma once

#include "core/Track.h"

#include <optional>
#include <string>

namespace orvalen {

class AudioPlayer;
struct ContentView;

// The preview player. Main thread. Tracks are compared by path.

/// Plays the track from its start. Does nothing if no music folder contains it or the folder cannot be read.
/// Writes an error line if the file cannot be played.
void playPreview(ContentView& view, const Track& track);
/// The action of the play button: pauses or resumes the previewed track, or plays another track.
void togglePreview(ContentView& view, const Track& track);
/// Stops if the track is the previewed track, or if both are absent.
void stopPreviewIfCurrent(ContentView& view, const std::optional<Track>& track);
/// Updates `playbackProgress` every 10 ms from now on.
void startPlaybackTimer(ContentView& view);
/// Sets `playbackProgress` to the played share of the track, 0 to 1; 0 unless the player is playing.
void updatePlaybackProgress(ContentView& view);
/// Moves the player to the position of the slider (`playbackProgress`).
void seekPreview(ContentView& view);

/// Returns the played share of the length, 0 to 1. A file can report no length or a wrong one.
double playedFraction(const AudioPlayer& player);
/// Returns ‘1:01’ for 61 seconds, rounded down; "0:00" if `seconds` is negative, not finite or very large.
std::string formatPlaybackTime(double seconds);
/// Return the position and the length of the previewed track; "0:00" for any other track.
std::string positionLabel(const ContentView& view, const Track& track);
std::string lengthLabel(const ContentView& view, const Track& track);

} // namespace orvalen
