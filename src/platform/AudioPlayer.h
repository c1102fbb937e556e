#pragma once

#include "core/Error.h"

#include <memory>
#include <string>

namespace orvalen {

/// One opened audio file. Main thread. Times are in seconds.
class AudioPlayer {
public:
    virtual ~AudioPlayer() = default;
    /// Prepares for play(). May do nothing.
    virtual void prepareToPlay() = 0;
    /// Starts, resumes after a pause, or starts again from the beginning after the end.
    virtual void play() = 0;
    /// Pauses and keeps the position.
    virtual void pause() = 0;
    /// Pauses and releases the sound device.
    virtual void stop() = 0;
    /// Returns false if paused, stopped or at the end.
    virtual bool isPlaying() const = 0;
    /// Returns the position from the start.
    virtual double currentTime() const = 0;
    /// Moves to the position, also while paused. After a position past the end, play() starts from the
    /// beginning.
    virtual void setCurrentTime(double seconds) = 0;
    /// Returns the length, or 0 if it is unknown.
    virtual double duration() const = 0;
};

class AudioPlayers {
public:
    virtual ~AudioPlayers() = default;
    /// Opens the file and waits until it can be played. Returns the reason if it cannot; never null.
    virtual Expected<std::unique_ptr<AudioPlayer>> open(const std::string& path) = 0;
};

} // namespace orvalen
