#include "BenchLibrary.h"

#include "app/state/ContentView.h"
#include "core/Keys.h"
#include "core/LibraryIndexBuilder.h"
#include "matching/MatchRun.h"
#include "support/TestPlatform.h"

#include <benchmark/benchmark.h>

namespace orvalen::bench {
namespace {

std::vector<std::string> repeated(const std::vector<std::string>& lines, std::size_t count) {
    std::vector<std::string> result;
    for (std::size_t i = 0; i < count; ++i)
        result.push_back(lines[i % lines.size()]);
    return result;
}

/// Complete match runs: parsing, search, preferred matches, console lines, posts, and the rows in the state.
/// The catalog is built before and counted separately.
void match(benchmark::State& state, const std::vector<std::string>& lines, const LibraryIndex& index) {
    const LibraryIndex fresh = unprepared(index);
    const double beforeCatalog = processorMilliseconds();
    const LibraryCatalog catalog(fresh);
    const double catalogMilliseconds = processorMilliseconds() - beforeCatalog;
    test::TestPlatform world;
    world.view.trackDict.set(fresh);
    world.database();
    double options = 0;
    double milliseconds = 0;
    for (auto _ : state) {
        const double before = processorMilliseconds();
        matchLines(lines, world.view);
        world.settle();
        milliseconds += processorMilliseconds() - before;
        state.PauseTiming();
        options = 0;
        for (const MatchedTrack& row : world.view.matchedTracks.get())
            options += static_cast<double>(row.options.size());
        world.view.matchedTracks.set({});
        world.console.clear();
        state.ResumeTiming();
    }
    const auto lineCount = static_cast<double>(lines.size());
    state.counters["ms_per_line"] = milliseconds / (lineCount * static_cast<double>(state.iterations()));
    state.counters["ms_catalog"] = catalogMilliseconds;
    state.counters["options_per_line"] = options / lineCount;
}

void matchGrown(benchmark::State& state) {
    const BenchLibrary& library = benchLibrary(static_cast<std::size_t>(state.range(0)));
    match(state, library.lines(static_cast<std::size_t>(state.range(1))), library.index);
}

void matchThese(benchmark::State& state, const std::vector<std::string>& lines) {
    const BenchLibrary& library = benchLibrary(static_cast<std::size_t>(state.range(0)));
    match(state, repeated(lines, static_cast<std::size_t>(state.range(1))), library.index);
}

/// Matches a line that finds 10,000 tracks with the same artist, title and file name.
void matchCrowd(benchmark::State& state) {
    static const LibraryIndex index = [] {
        test::MadeLibrary made;
        LibraryIndexBuilder builder;
        for (std::size_t i = 0; i < 100'000; ++i)
            builder.fileTrack(
                i % 10 == 0 ? Track{"Track 1", "Unknown", "", "/m/" + std::to_string(i) + "/Track 1.mp3", {}}
                            : made.nextTrack());
        return builder.finish();
    }();
    match(state, repeated({"Unknown - Track 1"}, static_cast<std::size_t>(state.range(0))), index);
}

BENCHMARK(matchGrown)->Name("match")->Apply(twoHundredLines);
BENCHMARK_CAPTURE(matchThese, short, {"U2 - One", "M - Pop Muzik", "Air - La", "X - Y", "Jo - Me"})
    ->Name("match_short")
    ->ArgNames({"tracks", "lines"})
    ->Args({10'000, 100})
    ->Args({100'000, 100})
    ->Args({1'000'000, 100})
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(matchThese, accents,
                  {"S\u00E9 - L\u00FCmi", "Bl\u00E9 Tr\u00FC - Cha", "Übermäßig – Café Noir"})
    ->Name("match_accents")
    ->ArgNames({"tracks", "lines"})
    ->Args({10'000, 100})
    ->Args({100'000, 100})
    ->Args({1'000'000, 100})
    ->Unit(benchmark::kMillisecond);
BENCHMARK(matchCrowd)
    ->Name("match_crowd/tracks:100000/same:10000")
    ->ArgNames({"lines"})
    ->Args({10})
    ->Unit(benchmark::kMillisecond);

} // namespace
} // namespace orvalen::bench
