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

TEST(TagFaults, AFileThatCannotBeReadKeepsItsBareName) {
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
    std::size_t tried = 0;
    for (const Fault& fault : faultsOf(counts, {EIO, EACCES})) {
        SCOPED_TRACE(describe(fault));
        const bool succeeds = fault.way == Fault::Way::halfThenContinue || fault.call == Call::close;
        if (fault.call != Call::open && fault.call != Call::read && !succeeds)
            continue;
        ++tried;
        EXPECT_EQ(read(fault), succeeds ? whole : bare);
        if (succeeds) {
            EXPECT_THAT(console.lines(), testing::IsEmpty());
        } else {
            EXPECT_THAT(console.lines(), testing::ElementsAre("Failed to load metadata from Song.mp3: " +
                                                              std::generic_category().message(fault.error)));
        }
    }
    EXPECT_GE(tried, 6U) << "the calls were not seen";
}

} // namespace
} // namespace orvalen::test
