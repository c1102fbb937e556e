#pragma once

#include "platform/AudioPlayer.h"

namespace orvalen {

/// Players that use libmpv. Opens regular files only. Opening waits at most 2.5 seconds for the drive.
class MpvAudioPlayers : public AudioPlayers {
public:
    Expected<std::unique_ptr<AudioPlayer>> open(const std::string& path) override;
};

} // namespace orvalen
