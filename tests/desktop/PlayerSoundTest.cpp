#include "platform/desktop/PlayerSound.h"

#include "platform/desktop/MpvCore.h"

#include <QFile>
#include <chrono>
#include <gtest/gtest.h>

namespace orvalen::test {
namespace {

using namespace std::chrono_literals;

TEST(PlayerSound, IsInTheProgramAndNeverHoldsTheWindowUp) {
    PlayerSound sound;
    QFile file(":/sounds/Glass.mp3");
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    MpvCore core;
    const auto loaded = core.load("hex://" + file.readAll().toHex().toStdString(), 3s);
    ASSERT_TRUE(loaded) << loaded.error().description;
    EXPECT_NEAR(core.number("duration").value_or(0), 1.6, 0.2);

    sound.play("Glass"); // starts the player once
    const auto start = std::chrono::steady_clock::now();
    sound.play("Glass");
    sound.play("No such sound");
    EXPECT_LT(std::chrono::steady_clock::now() - start, 100ms);
}

} // namespace
} // namespace orvalen::test
