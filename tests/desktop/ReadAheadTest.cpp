#include "platform/tags/ReadAhead.h"

#include "desktop/TagBytes.h"
#include "support/TemporaryFolder.h"

#include <chrono>
#include <gtest/gtest.h>
#include <thread>

namespace orvalen::test {
namespace {

using namespace std::chrono_literals;

/// Files that cannot be read are passed over. The files of a test are in the page cache, because they have
/// just been written.
TEST(ReadAhead, ReadsTheHeadsOfTheFirstFilesAndRestsWhenTheyAreCached) {
    TemporaryFolder folder;
    folder.makeFolder("Live.mp3");
    ReadAhead ahead;
    ahead.passOne(); // also more than was expected
    for (const char* unreadable : {"missing.mp3", "Live.mp3"})
        ahead.expect(folder.path(unreadable));
    const double before = bytesReadByThisProcess();
    for (int i = 0; i < 400; ++i)
        ahead.expect(folder.write(std::to_string(i) + ".mp3",
                                  id3(3, textFrame(3, "TIT2", 0, "Song")) + std::string(8192, '\0')));
    const auto filesRead = [&] { return (bytesReadByThisProcess() - before) / 4096; };
    for (int tries = 0; tries < 500 && filesRead() < 64; ++tries)
        std::this_thread::sleep_for(10ms);
    EXPECT_GE(filesRead(), 64);
    std::this_thread::sleep_for(50ms);
    EXPECT_LE(filesRead(), 300);
}

} // namespace
} // namespace orvalen::test
