#include "faults/FaultReport.h"
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

using testing::ElementsAre;
using testing::IsEmpty;

class TagFaults : public testing::Test {
protected:
    TagFaults() {
        std::filesystem::copy_file(ORVALEN_SAMPLES_DIR "/House/Night Band - Last Train Home.mp3", path);
    }
    Track read(std::optional<Fault> fault = {}) {
        console.clear();
        const FailingCalls calls({path}, fault);
        Track track = readTrackMetadata(assets, console, path);
        opened = calls.count(Call::open);
        reads = calls.count(Call::read);
        return track;
    }

    TemporaryFolder folder;
    const std::string path = folder.path("Song.mp3");
    FileMediaAssets assets;
    FakeConsole console;
    int opened = 0;
    int reads = 0;
};

/// A file whose tags cannot be read keeps its bare name; half of a tag is none.
TEST_F(TagFaults, EveryCallFailsInTurn) {
    const Track whole = read();
    const Track bare{"Song", "Unknown", "", path, std::nullopt};
    ASSERT_EQ(whole.title, "Last Train Home");
    ASSERT_GT(opened, 0);
    ASSERT_GT(reads, 0);
    const std::vector<std::pair<Call, int>> counts{{Call::open, opened}, {Call::read, reads}};
    for (const auto& [call, count] : counts)
        for (int number = 0; number < count; ++number)
            for (const int error : {EIO, EACCES}) {
                const Fault fault{call, number, Fault::Way::error, error};
                SCOPED_TRACE(std::string(nameOf(call)) + " " + std::to_string(number) + ": " + nameOf(fault));
                EXPECT_EQ(read(fault), bare);
                EXPECT_THAT(console.lines(), ElementsAre("Failed to load metadata from Song.mp3: " +
                                                         std::generic_category().message(error)));
                report("tags of a scanned file", nameOf(call), nameOf(fault),
                       "told; filed under its bare name");
            }
    for (int number = 0; number < reads; ++number) {
        const Fault fault{Call::read, number, Fault::Way::halfThenOn, 0};
        EXPECT_EQ(read(fault), whole);
        EXPECT_THAT(console.lines(), IsEmpty());
        report("tags of a scanned file", "read", nameOf(fault), "read whole");
    }
}

} // namespace
} // namespace orvalen::test
