#include "platform/desktop/PlayerSound.h"

#include "desktop/EventLoop.h"
#include "platform/desktop/MpvCore.h"

#include <QFile>
#include <chrono>
#include <gtest/gtest.h>

namespace orvalen::test {
namespace {

using namespace std::chrono_literals;

TEST(PlayerSound, IsInTheProgramAndCanBePlayedFromThere) {
    const PlayerSound sound;
    QFile file(":/sounds/Glass.mp3");
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_LT(file.size(), 40'000);
    MpvCore core;
    const auto loaded = core.load("hex://" + file.readAll().toHex().toStdString(), 3s);
    ASSERT_TRUE(loaded) << loaded.error().description;
    EXPECT_NEAR(core.number("duration").value_or(0), 1.6, 0.2);
}

TEST(PlayerSound, NeverHoldsTheWindowUp) {
    PlayerSound sound;
    sound.play("Glass"); // starts the player once
    const auto start = std::chrono::steady_clock::now();
    sound.play("Glass");
    sound.play("No such sound");
    sound.play("../Glass");
    EXPECT_LT(std::chrono::steady_clock::now() - start, 100ms);
    turnFor(200ms);
}

} // namespace
} // namespace orvalen::test
