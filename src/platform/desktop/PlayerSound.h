#pragma once

#include "platform/Sound.h"

#include <memory>

namespace orvalen {

class MpvCore;

/// The program's own sounds, by the name of the system's: "Glass", a short chime. They come from its
/// resources and are played by libmpv.
class PlayerSound : public Sound {
public:
    PlayerSound();
    ~PlayerSound() override;

    void play(std::string_view name) override;

private:
    std::unique_ptr<MpvCore> core_; ///< made for the first sound
};

} // namespace orvalen
