#include "BenchLibrary.h"
#include "SqlMemory.h"

#include "core/Keys.h"
#include "matching/MatchEngine.h"

#include <algorithm>
#include <benchmark/benchmark.h>

namespace orvalen::bench {
namespace {

/// The same containment search with SQLite: an in-memory table of normalised texts, and one prepared
/// statement.
class SqlTable {
public:
    SqlTable(const LibraryIndex& index, const char* create, const char* query) {
        db_.run(create);
        db_.run("BEGIN");
        sqlite3_stmt* insert = db_.prepare("INSERT INTO tracks (artist, title) VALUES (?, ?)");
        for (std::size_t position = 0; position < index.trackCount(); ++position) {
            const KeyHalves halves = index.keyHalves(position);
            SqlMemory::rows(insert, {halves.artist, halves.title});
        }
        db_.run("COMMIT");
        select_ = db_.prepare(query);
    }

    std::size_t matches(std::string_view artist, std::string_view title) {
        return SqlMemory::rows(select_, {artist, title}).size();
    }

private:
    SqlMemory db_;
    sqlite3_stmt* select_ = nullptr;
};

std::size_t characterCount(std::string_view text) {
    return static_cast<std::size_t>(
        std::ranges::count_if(text, [](char byte) { return (byte & 0xC0) != 0x80; }));
}

/// Returns normalised requests. Leaves out texts of less than three characters, which a trigram table cannot
/// find.
std::vector<Request> wanted(const BenchLibrary& library, std::size_t count) {
    std::vector<Request> requests;
    for (const std::string& line : library.lines(count)) {
        const Request request = parseWantedLine(line, "artist-title").value();
        Request normalized{normalize(request.artist), normalize(request.title)};
        if (characterCount(normalized.artist) >= 3 && characterCount(normalized.title) >= 3)
            requests.push_back(std::move(normalized));
    }
    return requests;
}

void search(benchmark::State& state, const char* create, const char* query) {
    const BenchLibrary& library = benchLibrary(static_cast<std::size_t>(state.range(0)));
    const std::vector<Request> requests = wanted(library, static_cast<std::size_t>(state.range(1)));
    const double beforeTable = processorMilliseconds();
    SqlTable table(library.index, create, query);
    state.counters["ms_table"] = processorMilliseconds() - beforeTable;
    std::size_t found = 0;
    const double before = processorMilliseconds();
    for (auto _ : state) {
        found = 0;
        for (const Request& request : requests)
            found += table.matches(request.artist, request.title);
    }
    const auto lines = static_cast<double>(requests.size());
    state.counters["ms_per_line"] =
        (processorMilliseconds() - before) / (lines * static_cast<double>(state.iterations()));
    state.counters["found_per_line"] = static_cast<double>(found) / lines;

    const LibraryCatalog catalog(library.index);
    std::size_t expected = 0;
    for (const Request& request : requests)
        expected += catalog.containing(request.artist, request.title).size();
    if (found != expected)
        state.SkipWithError("the table and the catalog do not find the same");
}

BENCHMARK_CAPTURE(search, fts5, "CREATE VIRTUAL TABLE tracks USING fts5(artist, title, tokenize = 'trigram')",
                  "SELECT rowid FROM tracks WHERE tracks MATCH "
                  "'artist : \"' || ? || '\" AND title : \"' || ? || '\"'")
    ->Name("search_fts5")
    ->Apply(twoHundredLines);
BENCHMARK_CAPTURE(search, instr, "CREATE TABLE tracks (artist TEXT, title TEXT)",
                  "SELECT rowid FROM tracks WHERE instr(artist, ?) AND instr(title, ?)")
    ->Name("search_instr")
    ->ArgNames({"tracks", "lines"})
    ->Args({100'000, 200})
    ->Unit(benchmark::kMillisecond);

} // namespace
} // namespace orvalen::bench
