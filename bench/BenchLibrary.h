#pragma once

#include "MadeLibrary.h"
#include "ProcessorTime.h"
#include "core/LibraryIndexBuilder.h"
#include "matching/LibraryCatalog.h"

#include <benchmark/benchmark.h>
#include <map>
#include <string>
#include <vector>

namespace orvalen::bench {

/// A generated library and wanted lines for it.
struct BenchLibrary {
    explicit BenchLibrary(std::size_t tracks) : made(1), index(made.index(tracks)) {}

    std::vector<std::string> lines(std::size_t count) const {
        return test::MadeLibrary(made).wantedLines(count);
    }

    test::MadeLibrary made;
    LibraryIndex index;
};

/// Returns the library of this size. Keeps it, because generating takes longer than the measurements.
inline const BenchLibrary& benchLibrary(std::size_t tracks) {
    static std::map<std::size_t, BenchLibrary> libraries;
    return libraries.try_emplace(tracks, tracks).first->second;
}

/// Returns a copy that shares nothing with the index, so that no catalog is cached in the copy.
inline LibraryIndex unprepared(const LibraryIndex& index) {
    LibraryIndexBuilder builder;
    for (std::size_t position = 0; position < index.trackCount(); ++position)
        builder.fileTrack(index.track(position));
    return builder.finish();
}

// Set the library sizes of a benchmark.
inline void oneSize(benchmark::internal::Benchmark* bench) {
    bench->ArgNames({"tracks"})->Arg(100'000)->Unit(benchmark::kMillisecond);
}
inline void twoHundredLines(benchmark::internal::Benchmark* bench) {
    bench->ArgNames({"tracks", "lines"})->Unit(benchmark::kMillisecond);
    for (const std::int64_t tracks : {10'000, 60'000, 100'000, 1'000'000})
        bench->Args({tracks, 200});
}
inline void threeSizes(benchmark::internal::Benchmark* bench) {
    bench->ArgNames({"tracks"})->Arg(10'000)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);
}

} // namespace orvalen::bench
