#include "BenchLibrary.h"
#include "SqlMemory.h"

#include "core/Keys.h"
#include "matching/TrackSearch.h"
#include "matching/WantedList.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <random>
#include <set>

namespace orvalen::bench {
namespace {

/// A text to find, and the track from which it was made.
struct Query {
    std::string text;
    std::string artist;
    std::string title;
};

/// Removes a letter of the longest word, replaces it, or exchanges it with the next one.
std::string misspelt(std::string text, std::mt19937& random) {
    std::size_t start = 0;
    std::size_t length = 0;
    for (std::size_t i = 0, first = 0; i <= text.size(); ++i)
        if (i == text.size() || text[i] == ' ') {
            if (i - first > length) {
                start = first;
                length = i - first;
            }
            first = i + 1;
        }
    if (length < 4)
        return text;
    const std::size_t place = start + 1 + random() % (length - 2);
    switch (random() % 3) {
    case 0:
        return text.erase(place, 1);
    case 1:
        std::swap(text[place], text[place + 1]);
        return text;
    default:
        text[place] = 'x';
        return text;
    }
}

/// Returns artist and title of some tracks, each with a misspelt word.
std::vector<Query> queries(const LibraryIndex& index, std::size_t count) {
    std::mt19937 random(5);
    std::vector<Query> result;
    while (result.size() < count) {
        const KeyHalves halves = index.keyHalves(random() % index.trackCount());
        result.push_back(
            {misspelt(std::string(halves.artist), random) + " " + misspelt(std::string(halves.title), random),
             std::string(halves.artist), std::string(halves.title)});
    }
    return result;
}

/// Returns what is in the search field while the query is typed: 1 letter, 6, 11 and so on, then all.
std::vector<std::string> keystrokes(const Query& query) {
    std::vector<std::string> texts;
    for (std::size_t length = 1; length < query.text.size(); length += 5)
        texts.push_back(query.text.substr(0, length));
    texts.push_back(query.text);
    return texts;
}

bool holds(const LibraryIndex& index, const std::vector<std::size_t>& positions, const Query& query) {
    return std::ranges::any_of(positions, [&](std::size_t position) {
        const KeyHalves halves = index.keyHalves(position);
        return halves.artist == query.artist && halves.title == query.title;
    });
}

/// Searches after each keystroke of every query. Reports the milliseconds per keystroke, and the share of
/// queries whose track is among the results of the complete text.
template <typename Find>
void type(benchmark::State& state, const LibraryIndex& index, Find find) {
    const std::vector<Query> wanted = queries(index, index.trackCount() > 100'000 ? 4 : 20);
    double slowest = 0;
    double all = 0;
    std::size_t strokes = 0;
    std::size_t found = 0;
    for (auto _ : state) {
        slowest = all = 0;
        strokes = found = 0;
        for (const Query& query : wanted) {
            std::vector<std::size_t> positions;
            for (const std::string& text : keystrokes(query)) {
                const double before = processorMilliseconds();
                positions = find(text);
                const double milliseconds = processorMilliseconds() - before;
                slowest = std::max(slowest, milliseconds);
                all += milliseconds;
                ++strokes;
            }
            found += holds(index, positions, query);
        }
    }
    state.counters["ms_keystroke"] = all / static_cast<double>(strokes);
    state.counters["ms_slowest"] = slowest;
    state.counters["found_share"] = static_cast<double>(found) / static_cast<double>(wanted.size());
}

void find(benchmark::State& state) {
    const LibraryIndex index = unprepared(benchLibrary(static_cast<std::size_t>(state.range(0))).index);
    const LibraryCatalog catalog(index);
    const double before = processorMilliseconds();
    catalog.words();
    state.counters["ms_table"] = processorMilliseconds() - before;
    type(state, index, [&](const std::string& text) { return findTracks(catalog, text); });
}

/// The same with SQLite: an in-memory trigram table that returns the tracks with the most common trigrams.
class TrigramTable {
public:
    explicit TrigramTable(const LibraryIndex& index) {
        db_.run("CREATE VIRTUAL TABLE tracks USING fts5(name, tokenize = 'trigram')");
        db_.run("BEGIN");
        sqlite3_stmt* insert = db_.prepare("INSERT INTO tracks (name) VALUES (?)");
        for (std::size_t position = 0; position < index.trackCount(); ++position)
            SqlMemory::rows(insert, {index.key(position)});
        db_.run("COMMIT");
        select_ = db_.prepare("SELECT rowid - 1 FROM tracks WHERE tracks MATCH ? ORDER BY rank LIMIT 50");
    }

    std::vector<std::size_t> find(const std::string& text) {
        std::set<std::string> trigrams;
        for (std::size_t i = 0; i + 3 <= text.size(); ++i)
            trigrams.insert(text.substr(i, 3));
        std::string match;
        for (const std::string& trigram : trigrams)
            match += (match.empty() ? "\"" : " OR \"") + trigram + "\"";
        return match.empty() ? std::vector<std::size_t>() : SqlMemory::rows(select_, {match});
    }

private:
    SqlMemory db_;
    sqlite3_stmt* select_ = nullptr;
};

void findFts5(benchmark::State& state) {
    const LibraryIndex& index = benchLibrary(static_cast<std::size_t>(state.range(0))).index;
    const double before = processorMilliseconds();
    TrigramTable table(index);
    state.counters["ms_table"] = processorMilliseconds() - before;
    type(state, index, [&](const std::string& text) { return table.find(text); });
}

/// Measures suggestions for misspelt lines, as rows without a candidate show them.
void suggest(benchmark::State& state) {
    const BenchLibrary& library = benchLibrary(static_cast<std::size_t>(state.range(0)));
    const LibraryCatalog catalog(library.index);
    catalog.words();
    std::mt19937 random(6);
    std::vector<Request> requests;
    for (const std::string& line : library.lines(100)) {
        Request request = parseWantedLine(line, "artist-title").value();
        requests.push_back({misspelt(request.artist, random), misspelt(request.title, random)});
    }
    std::size_t rows = 0;
    const double before = processorMilliseconds();
    for (auto _ : state)
        for (const Request& request : requests) {
            benchmark::DoNotOptimize(suggestTracks(catalog, request));
            ++rows;
        }
    state.counters["ms_row"] = (processorMilliseconds() - before) / static_cast<double>(rows);
}

void findSizes(benchmark::internal::Benchmark* bench) {
    bench->Iterations(1)->Arg(60'000)->Apply(threeSizes);
}
BENCHMARK(find)->Name("find")->Apply(findSizes);
BENCHMARK(findFts5)->Name("find_fts5")->Apply(findSizes);
BENCHMARK(suggest)->Name("suggest")->Apply(oneSize);

} // namespace
} // namespace orvalen::bench
