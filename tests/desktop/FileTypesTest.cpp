#include "platform/desktop/FileTypes.h"

#include <gtest/gtest.h>

namespace orvalen {
namespace {

const AllowedTypes anything;
const AllowedTypes csv{{TypeFamily::commaSeparatedText}, {}};
const AllowedTypes session{{}, {"orvs"}};
const AllowedTypes browse{
    {TypeFamily::mp3Audio, TypeFamily::mpeg4Audio, TypeFamily::wavAudio, TypeFamily::movie}, {"aiff", "aif"}};

TEST(FileTypes, SayWhichFilesMayBeChosen) {
    struct Case {
        const char* quirk;
        const char* name;
        const AllowedTypes& types;
        bool chosen;
    };
    const Case cases[] = {
        {"no restriction takes a name without extension", "README", anything, true},
        {"its own extension", "evening.orvs", session, true},
        {"another extension", "evening.json", session, false},
        {"the extension alone is a hidden name's", "orvs", session, false},
        {"only the last extension counts", "evening.orvs.bak", session, false},
        {"a family's extension", "requests.Csv", csv, true},
        {"a movie with sound", "video.mov", browse, true},
        {"the last of a family", "clip.webm", browse, true},
        {"music that is not read", "song.flac", browse, false},
    };
    for (const Case& row : cases)
        EXPECT_EQ(mayBeChosen(row.name, row.types), row.chosen) << row.quirk;
}

TEST(FileTypes, BecomeOneFilterLineInEitherCase) {
    EXPECT_EQ(nameFilter(anything), "");
    EXPECT_EQ(nameFilter(csv), "CSV files (*.csv *.CSV)");
    const std::string both = nameFilter({{TypeFamily::mpeg4Audio, TypeFamily::movie}, {}});
    EXPECT_TRUE(both.starts_with("Audio and movie files (*.m4a *.M4A ")) << both;
    EXPECT_EQ(both.find("*.mp4 "), both.rfind("*.mp4 ")) << "an extension of two families appears once";
}

} // namespace
} // namespace orvalen
