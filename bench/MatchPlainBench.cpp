#include "BenchLibrary.h"

#include "core/Keys.h"
#include "matching/MatchEngine.h"

#include <benchmark/benchmark.h>

namespace orvalen::bench {
namespace {

/// The normalised texts of a track.
struct PlainTexts {
    std::string artist;
    std::string title;
    std::string fileName;
};

std::vector<PlainTexts> plainTexts(const LibraryIndex& index) {
    std::vector<PlainTexts> texts;
    for (std::size_t position = 0; position < index.trackCount(); ++position) {
        const TrackView track = index.track(position);
        texts.push_back({normalize(track.artist), normalize(track.title), fileNameKey(track.path)});
    }
    return texts;
}

std::size_t plainMatches(const std::vector<PlainTexts>& texts, const Request& request) {
    const std::string key = libraryKey(request.artist, request.title);
    const std::string artist = normalize(request.artist);
    const std::string title = normalize(request.title);
    std::size_t count = 0;
    for (const PlainTexts& text : texts)
        count += text.fileName == key ||
                 (containsNormalized(text.artist, artist) && containsNormalized(text.title, title));
    return count;
}

std::size_t catalogMatches(const LibraryCatalog& catalog, const Request& request) {
    const auto byName = matchesByFileName(catalog, libraryKey(request.artist, request.title));
    auto all = matchesByArtistTitle(catalog, request.artist, request.title);
    all.insert(all.end(), byName.begin(), byName.end());
    std::sort(all.begin(), all.end());
    return static_cast<std::size_t>(std::unique(all.begin(), all.end()) - all.begin());
}

std::vector<Request> requests(const std::vector<std::string>& lines) {
    std::vector<Request> result;
    for (const std::string& line : lines)
        result.push_back(parseWantedLine(line, "artist-title").value());
    return result;
}

/// Search by file name and containment, with a loop over all texts or with the catalog.
template <typename Search>
void search(benchmark::State& state, const std::vector<Request>& wanted, Search matches) {
    std::size_t found = 0;
    const double before = processorMilliseconds();
    for (auto _ : state) {
        found = 0;
        for (const Request& request : wanted)
            found += matches(request);
        benchmark::DoNotOptimize(found);
    }
    const auto count = static_cast<double>(wanted.size());
    state.counters["ms_per_line"] =
        (processorMilliseconds() - before) / (count * static_cast<double>(state.iterations()));
    state.counters["found_per_line"] = static_cast<double>(found) / count;
}

void matchPlain(benchmark::State& state) {
    const BenchLibrary& library = benchLibrary(static_cast<std::size_t>(state.range(0)));
    const double before = processorMilliseconds();
    const auto texts = plainTexts(library.index);
    state.counters["ms_table"] = processorMilliseconds() - before;
    search(state, requests(library.lines(static_cast<std::size_t>(state.range(1)))),
           [&texts](const Request& request) { return plainMatches(texts, request); });
}

void searchCatalog(benchmark::State& state) {
    const BenchLibrary& library = benchLibrary(static_cast<std::size_t>(state.range(0)));
    const LibraryCatalog catalog(library.index);
    search(state, requests(library.lines(static_cast<std::size_t>(state.range(1)))),
           [&catalog](const Request& request) { return catalogMatches(catalog, request); });
}

BENCHMARK(matchPlain)->Name("match_plain")->Apply(twoHundredLines);
BENCHMARK(searchCatalog)->Name("search")->Apply(twoHundredLines);

} // namespace
} // namespace orvalen::bench
