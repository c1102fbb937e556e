#include "BenchLibrary.h"
#include "core/FolderCount.h"
#include "core/LibraryIndexBuilder.h"

#include <benchmark/benchmark.h>
#include <fstream>
#include <malloc.h>
#include <unistd.h>

namespace orvalen::bench {
namespace {

std::size_t residentBytes() {
    ::malloc_trim(0);
    std::ifstream file("/proc/self/statm");
    std::size_t total = 0;
    std::size_t resident = 0;
    file >> total >> resident;
    return resident * static_cast<std::size_t>(::sysconf(_SC_PAGESIZE));
}

/// Resident memory of index and catalog.
void memory(benchmark::State& state) {
    const auto tracks = static_cast<std::size_t>(state.range(0));
    const auto perTrack = [tracks](std::size_t after, std::size_t before) {
        return (static_cast<double>(after) - static_cast<double>(before)) / static_cast<double>(tracks);
    };
    for (auto _ : state) {
        const std::size_t before = residentBytes();
        const LibraryIndex index = test::MadeLibrary().index(tracks);
        const std::size_t withIndex = residentBytes();
        const LibraryCatalog catalog(index);
        const std::size_t withCatalog = residentBytes();
        std::size_t texts = 0;
        for (std::size_t position = 0; position < tracks; ++position) {
            const TrackView track = index.track(position);
            texts += track.title.size() + track.artist.size() + track.genre.size() + track.path.size();
        }
        state.counters["bytes_per_track"] = perTrack(withCatalog, before);
        state.counters["bytes_index"] = perTrack(withIndex, before);
        state.counters["bytes_catalog"] = perTrack(withCatalog, withIndex);
        state.counters["bytes_texts"] = perTrack(texts, 0);
    }
}

void buildIndex(benchmark::State& state) {
    const LibraryIndex& index = benchLibrary(static_cast<std::size_t>(state.range(0))).index;
    for (auto _ : state)
        benchmark::DoNotOptimize(unprepared(index).trackCount());
}

/// Adds one track to an index of which a copy exists.
void fileOneTrack(benchmark::State& state) {
    const LibraryIndex& index = benchLibrary(static_cast<std::size_t>(state.range(0))).index;
    const Track track{"Title", "Somebody new", "", "/home/dj/browsed.mp3", 120};
    for (auto _ : state) {
        LibraryIndex copy = index;
        fileTrack(copy, track);
        benchmark::DoNotOptimize(copy.trackCount());
    }
}

/// The calls of the folder list after each change of the index.
void countUnderFolders(benchmark::State& state) {
    const LibraryIndex& index = benchLibrary(static_cast<std::size_t>(state.range(0))).index;
    const std::string deep(index.track(index.trackCount() / 2).path);
    for (auto _ : state)
        for (const std::string& folder : {std::string("/home/dj/Music"), std::string("/home/dj/Music/Techno"),
                                          std::string("/home/dj/Music/R"), std::string("/media/stick"), deep})
            benchmark::DoNotOptimize(countTracksUnderFolder(index, folder));
}

BENCHMARK(memory)
    ->Name("memory")
    ->ArgNames({"tracks"})
    ->Arg(1'000'000)
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(buildIndex)->Name("index_build")->Apply(threeSizes);
BENCHMARK(fileOneTrack)->Name("index_file_one")->Apply(threeSizes);
BENCHMARK(countUnderFolders)->Name("count_under_five_folders")->Apply(threeSizes);

} // namespace
} // namespace orvalen::bench
