#include "core/Files.h"
#include "core/Json.h"
#include "core/LibraryIndexBuilder.h"
#include "import/DjepImport.h"
#include "library/LibraryDocument.h"
#include "matching/MatchRun.h"
#include "support/Builders.h"
#include "support/TemporaryFolder.h"
#include "support/TestPlatform.h"

#include <cstdlib>
#include <functional>
#include <gtest/gtest.h>
#include <new>
#include <string>
#include <utility>

namespace {

/// The number of the allocation that fails on this thread, counted from 0. Negative: none fails.
thread_local int failing = -1;

} // namespace

void* operator new(std::size_t size) {
    if (failing >= 0 && failing-- == 0)
        throw std::bad_alloc();
    if (void* memory = std::malloc(size == 0 ? 1 : size))
        return memory;
    throw std::bad_alloc();
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return failing >= 0 && failing-- == 0 ? nullptr : std::malloc(size == 0 ? 1 : size);
}
void operator delete(void* memory) noexcept {
    std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}
void operator delete(void* memory, const std::nothrow_t&) noexcept {
    std::free(memory);
}

namespace orvalen::test {
namespace {

/// Makes each allocation of the call fail in turn. Returns the number of allocations. Calls `prepare` before
/// each call; its allocations do not fail.
int failEachAllocation(const std::function<void()>& prepare, const std::function<void()>& call) {
    for (int number = 0;; ++number) {
        prepare();
        failing = number;
        call();
        if (std::exchange(failing, -1) >= 0)
            return number;
    }
}

TEST(OutOfMemory, EndsAReadingAndNotTheProgram) {
    const TemporaryFolder folder;
    const Location csv{folder.write("event.csv", "head\nPlay,Dancing Queen,ABBA\nMust,SOS,ABBA\n")};
    const std::string library =
        R"({"tracks":[{"title":"A title that needs memory","artist":"A","genre":"",)"
        R"("path":"/1.mp3","bpm":100}],"unknown":1e400,"preferred":[{"key":"a","path":"/1.mp3"}],)"
        R"("folders":["/a folder that needs memory"]})";
    const std::string session = encodeSession("list", std::vector{row("A", "T", {track("A", "T")})});
    // The JSON library detects the processor at its first use, and ends the program if that has no memory.
    ASSERT_TRUE(decodeSession(session));
    TestPlatform test;
    std::string bytes;
    const std::pair<const char*, std::function<void()>> readings[] = {
        {library.c_str(), [&] { static_cast<void>(readLibraryDocument(std::move(bytes))); }},
        {session.c_str(), [&] { static_cast<void>(decodeSession(std::move(bytes))); }},
        {"", [&] { static_cast<void>(readWholeFile(csv.path)); }},
        {"", [&] { parseDJEPCSV(test.view, csv); }},
    };
    for (const auto& [text, reading] : readings)
        EXPECT_GT(failEachAllocation([&] { bytes = text; }, reading), 0);
    EXPECT_EQ(test.view.matchInput.get(), "ABBA - Dancing Queen\nABBA - SOS") << "with enough memory";
}

TEST(OutOfMemory, LeavesTheProgramWithoutACatalogAtItsStart) {
    TestPlatform test;
    prepareMatchingOnLibraryChange(test.view);
    const auto prepare = [&] {
        LibraryIndexBuilder tracks;
        tracks.fileTrack(track("A", "T"));
        test.view.trackDict.set(tracks.finish());
    };
    EXPECT_GT(failEachAllocation(prepare, [&] { test.matchQueue.runOne(); }), 5);
}

} // namespace
} // namespace orvalen::test
