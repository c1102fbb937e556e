#include "platform/desktop/PlayerSound.h"

#include "platform/desktop/MpvCore.h"

#include <QFile>

static void initialiseSounds() {
    Q_INIT_RESOURCE(sounds); // must be outside all namespaces
}

namespace orvalen {

PlayerSound::PlayerSound() {
    initialiseSounds();
}

PlayerSound::~PlayerSound() = default;

void PlayerSound::play(std::string_view name) {
    QFile file(":/sounds/" + QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size())) + ".mp3");
    if (!file.open(QIODevice::ReadOnly))
        return;
    if (!core_)
        core_ = std::make_unique<MpvCore>();
    // With "hex://", libmpv reads the bytes from the address itself.
    const std::string address = "hex://" + file.readAll().toHex().toStdString();
    core_->set("pause", "no");
    core_->set("keep-open", "no"); // releases the sound device at the end
    core_->command({"loadfile", address.c_str()});
}

} // namespace orvalen
