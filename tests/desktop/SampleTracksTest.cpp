#include "library/AudioMetadata.h"
#include "platform/desktop/TagLibMediaAssets.h"
#include "support/Fakes.h"

#include <filesystem>
#include <gtest/gtest.h>

namespace orvalen::test {
namespace {

struct Sample {
    const char* name;
    const char* title;
    const char* artist;
    std::optional<std::int64_t> bpm;
};

const Sample samples[] = {
    {"House/Night Band - Last Train Home.mp3", "Last Train Home", "Night Band", 123},
    {"Wedding/Night Band - Last Train Home.mp3", "Last Train Home", "Night Band", 123},
    {"House/Velvet Circuit - Midnight Arcade (Extended Mix).mp3", "Midnight Arcade (Extended Mix)",
     "Velvet Circuit", 126},
    {"House/Velvet Circuit - Neon Rain.mp3", "Neon Rain", "Unknown", {}},
    {"House/Static Garden - Undertow.mp3", "Undertow", "Static Garden", {}},
    {"House/Static Garden - Track 03.mp3", "", "Static Garden", {}},
    {"House/Static Garden - Bloom.aiff", "Bloom", "Static Garden", 120},
    {"House/Static Garden - Bloom (Dub).aif", "Static Garden - Bloom (Dub)", "Unknown", {}},
    {"Wedding/Zoé & les Étoiles - Crème Brûlée.mp3", "Crème Brûlée", "Zoé & les Étoiles", 96},
    {"Wedding/Νίκη Αλεξίου - Καλοκαίρι.mp3", "Καλοκαίρι", "Νίκη Αλεξίου", {}},
    {"Wedding/Speech Intro.mp3", "Speech Intro", "Unknown", {}},
    {"Wedding/Marlow Quay - Paper Boats.m4a", "Paper Boats", "Marlow Quay", {}},
    {"Wedding/Marlow Quay - Harbour Lights.mp4", "Harbour Lights", "Marlow Quay", {}},
    {"Wedding/The Lanterns - First Dance.wav", "First Dance", "The Lanterns", 84},
};

TEST(SampleTracks, AreReadAsTheirTableSays) {
    TagLibMediaAssets assets;
    FakeConsole console;
    for (const Sample& sample : samples) {
        const std::string path = std::string(ORVALEN_SAMPLES_DIR) + "/" + sample.name;
        const Track track = readTrackMetadata(assets, console, path);
        EXPECT_EQ(track.title, sample.title) << sample.name;
        EXPECT_EQ(track.artist, sample.artist) << sample.name;
        EXPECT_EQ(track.bpm, sample.bpm) << sample.name;
        EXPECT_EQ(track.path, path);
    }
    EXPECT_TRUE(console.lines().empty());
}

TEST(SampleTracks, AreAllInTheTableAndSmall) {
    std::size_t count = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(ORVALEN_SAMPLES_DIR)) {
        if (!entry.is_regular_file())
            continue;
        ++count;
        EXPECT_LT(entry.file_size(), 40'000U) << entry.path();
    }
    EXPECT_EQ(count, std::size(samples));
}

} // namespace
} // namespace orvalen::test
