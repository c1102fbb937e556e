#pragma once

#include "platform/AudioPlayer.h"

namespace orvalen {

/// Players over libmpv. Only a regular file is ever opened, whatever its name or content says. Opening waits
/// at most 2.5 seconds for the drive.
class MpvAudioPlayers : public AudioPlayers {
public:
    Expected<std::unique_ptr<AudioPlayer>> open(const std::string& path) override;
};

} // namespace orvalen
