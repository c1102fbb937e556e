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
    std::vector<int> counts;
    const auto read = [&](std::optional<Fault> fault) {
        console.clear();
        const FailingCalls calls({path}, fault);
        const Track track = readTrackMetadata(assets, console, path);
        counts = calls.counts();
        return track;
    };
    const Track whole = read({});
    const Track bare{"Song", "Unknown", "", path, std::nullopt};
    ASSERT_EQ(whole.title, "Last Train Home");
    std::size_t failed = 0;
    for (const Fault& fault : faultsOf(counts, {EIO, EACCES})) {
        SCOPED_TRACE(describe(fault));
        const Track track = read(fault);
        EXPECT_TRUE(track == whole || fault.way == Fault::Way::error) << "the rest of a short read was lost";
        if (!(track == whole)) {
            ++failed;
            EXPECT_EQ(track, bare);
            EXPECT_THAT(console.lines(), testing::ElementsAre("Failed to load metadata from Song.mp3: " +
                                                              std::generic_category().message(fault.error)));
        }
        EXPECT_EQ(read({}), whole);
    }
    EXPECT_GE(failed, 4U) << "the calls were not seen";
}

} // namespace
} // namespace orvalen::test
