#pragma once

#include "core/Error.h"

#include <memory>
#include <string>

namespace orvalen {

/// One opened audio file that can be heard. Main thread; times in seconds.
class AudioPlayer {
public:
    virtual ~AudioPlayer() = default;
    virtual void prepareToPlay() = 0;
    /// Starts, goes on from a pause, or begins again after the end.
    virtual void play() = 0;
    virtual void pause() = 0;
    /// Like pause, and lets the output go.
    virtual void stop() = 0;
    /// False when paused, stopped or at the end.
    virtual bool isPlaying() const = 0;
    virtual double currentTime() const = 0;
    virtual void setCurrentTime(double seconds) = 0;
    virtual double duration() const = 0;
};

class AudioPlayers {
public:
    virtual ~AudioPlayers() = default;
    /// Opens the file and returns when it can be played, or why it cannot. Never null on success.
    virtual Expected<std::unique_ptr<AudioPlayer>> open(const std::string& path) = 0;
};

} // namespace orvalen
