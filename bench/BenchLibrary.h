#pragma once

#include "core/LibraryIndexBuilder.h"
#include "matching/LibraryCatalog.h"
#include "support/MadeLibrary.h"

#include <ctime>
#include <map>
#include <string>
#include <vector>

namespace orvalen::bench {

/// A made library and lines that fit it.
struct BenchLibrary {
    explicit BenchLibrary(std::size_t tracks) : made(1), index(made.index(tracks)) {}

    std::vector<std::string> lines(std::size_t count) const {
        return test::MadeLibrary(made).wantedLines(count);
    }

    test::MadeLibrary made;
    LibraryIndex index;
};

/// Made once a size and kept, because making takes longer than what is measured.
inline const BenchLibrary& benchLibrary(std::size_t tracks) {
    static std::map<std::size_t, BenchLibrary> libraries;
    return libraries.try_emplace(tracks, tracks).first->second;
}

/// The index again with texts of its own, so that it has no cache yet.
inline LibraryIndex unprepared(const LibraryIndex& index) {
    LibraryIndexBuilder builder;
    for (std::size_t position = 0; position < index.trackCount(); ++position)
        builder.fileTrack(index.track(position));
    return builder.finish();
}

/// The processor's milliseconds for this thread, which say the same on a busy machine as on an idle one.
inline double processorMilliseconds() {
    timespec time{};
    ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

} // namespace orvalen::bench
