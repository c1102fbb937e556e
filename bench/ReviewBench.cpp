#include "ReviewedRows.h"
#include "app/state/ContentView.h"
#include "core/Files.h"
#include "core/Json.h"
#include "export/ExportTargets.h"
#include "matching/MatchReview.h"
#include "session/SessionFiles.h"
#include "support/TestPlatform.h"

#include <benchmark/benchmark.h>

namespace orvalen::test {
namespace {

void autoSave(benchmark::State& state) {
    TestPlatform test;
    test.view.matchedTracks.set(reviewedRows(state.range(0)));
    for (auto _ : state) {
        autoSaveSession(test.view);
        state.PauseTiming();
        test.mainQueue.run();
        test.console.clear();
        state.ResumeTiming();
    }
    const auto bytes = test.support().read("Orvalen/session.orvs").size();
    state.counters["MB"] = static_cast<double>(bytes) / 1e6;
}

/// The encoding part of an auto-save, without writing the file.
void encode(benchmark::State& state) {
    const auto rows = reviewedRows(state.range(0));
    for (auto _ : state)
        benchmark::DoNotOptimize(encodeSession("", rows));
}

void loadLast(benchmark::State& state) {
    TestPlatform test;
    test.view.matchedTracks.set(reviewedRows(state.range(0)));
    autoSaveSession(test.view);
    for (auto _ : state)
        loadLastSession(test.view);
}

void selectAll(benchmark::State& state) {
    TestPlatform test;
    test.view.matchedTracks.set(reviewedRows(state.range(0)));
    std::size_t writes = 0;
    test.view.matchedTracks.observe([&] { ++writes; });
    for (auto _ : state) {
        setIncludeForAll(test.view, false);
        setIncludeForAll(test.view, true);
    }
    benchmark::DoNotOptimize(writes);
}

void exportList(benchmark::State& state) {
    TestPlatform test;
    const TemporaryFolder folder;
    test.view.matchedTracks.set(reviewedRows(state.range(0)));
    for (auto _ : state) {
        test.dialogs.willSaveTo(folder.path("playlist.m3u"));
        exportPlaylist(test.view);
    }
    if (!test.view.showExportSuccessBanner.get())
        state.SkipWithError("nothing was exported");
}

BENCHMARK(autoSave)->Name("autosave")->ArgName("rows")->Arg(200)->Arg(10'000)->Unit(benchmark::kMillisecond);
BENCHMARK(encode)->Name("autosave_encode")->ArgName("rows")->Arg(10'000)->Unit(benchmark::kMillisecond);
BENCHMARK(loadLast)->Name("loadlast")->ArgName("rows")->Arg(10'000)->Unit(benchmark::kMillisecond);
BENCHMARK(selectAll)->Name("selectall")->ArgName("rows")->Arg(10'000)->Unit(benchmark::kMillisecond);
BENCHMARK(exportList)->Name("export")->ArgName("rows")->Arg(10'000)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace orvalen::test
