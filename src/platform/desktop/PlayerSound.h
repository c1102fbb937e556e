#pragma once

#include "platform/Sound.h"

#include <memory>

namespace orvalen {

class MpvCore;

/// Plays sounds from the program's resources with libmpv. Knows "Glass", a short chime.
class PlayerSound : public Sound {
public:
    PlayerSound();
    ~PlayerSound() override;

    void play(std::string_view name) override;

private:
    std::unique_ptr<MpvCore> core_; ///< created for the first sound
};

} // namespace orvalen
