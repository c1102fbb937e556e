#include "faults/FailingCalls.h"
#include "library/AudioMetadata.h"
#include "platform/tags/FileMediaAssets.h"
#include "support/Fakes.h"
#include "support/Folders.h"
#include "support/TemporaryFolder.h"

#include <cerrno>
#include <filesystem>
#include <gmock/gmock.h>
#include <system_error>

namespace orvalen::test {
namespace {

TEST(TagFaults, AFileThatCannotBeReadKeepsItsBareNameAndIsReadTheNextTime) {
    const TemporaryFolder folder;
    const std::string path = folder.path("Song.mp3");
    std::filesystem::copy_file(ORVALEN_SAMPLES_DIR "/House/Night Band - Last Train Home.mp3", path);
    FileMediaAssets assets;
    FakeConsole console;
    std::vector<std::string_view> calls;
    const auto read = [&](const Fault& fault) {
        console.clear();
        const FailingCalls failing({path}, fault);
        const Track track = readTrackMetadata(assets, console, path);
        calls = failing.calls();
        return track;
    };
    const Track whole = read({});
    ASSERT_EQ(whole.title, "Last Train Home");
    for (const Fault& fault : faultsOf(calls)) {
        SCOPED_TRACE(testing::Message() << fault);
        const bool isRead = fault.half || fault.error == EINTR || fault.call == "close";
        EXPECT_EQ(read(fault), isRead ? whole : (Track{"Song", "Unknown", "", path, std::nullopt}));
        if (!isRead) {
            EXPECT_THAT(console.lines(), testing::ElementsAre("Failed to load metadata from Song.mp3: " +
                                                              std::generic_category().message(fault.error)));
        }
        EXPECT_EQ(read({}), whole);
    }
}

} // namespace
} // namespace orvalen::test
