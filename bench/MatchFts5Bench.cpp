#include "BenchLibrary.h"

#include "core/Keys.h"
#include "matching/MatchEngine.h"

#include <benchmark/benchmark.h>
#include <sqlite3.h>

namespace orvalen::bench {
namespace {

/// The same containment search with SQLite: an in-memory table of normalised texts, and one prepared
/// statement.
class SqlTable {
public:
    SqlTable(const LibraryIndex& index, const char* create, const char* query) {
        sqlite3_open(":memory:", &db_);
        run(create);
        run("BEGIN");
        sqlite3_stmt* insert = prepared("INSERT INTO tracks (artist, title) VALUES (?, ?)");
        for (std::size_t position = 0; position < index.trackCount(); ++position) {
            const KeyHalves halves = index.keyHalves(position);
            bind(insert, 1, halves.artist);
            bind(insert, 2, halves.title);
            sqlite3_step(insert);
            sqlite3_reset(insert);
        }
        sqlite3_finalize(insert);
        run("COMMIT");
        select_ = prepared(query);
    }
    ~SqlTable() {
        sqlite3_finalize(select_);
        sqlite3_close(db_);
    }
    SqlTable(const SqlTable&) = delete;
    SqlTable& operator=(const SqlTable&) = delete;

    std::size_t matches(std::string_view artist, std::string_view title) {
        bind(select_, 1, artist);
        bind(select_, 2, title);
        std::size_t count = 0;
        while (sqlite3_step(select_) == SQLITE_ROW)
            ++count;
        sqlite3_reset(select_);
        return count;
    }

private:
    void run(const char* sql) {
        if (sqlite3_exec(db_, sql, nullptr, nullptr, nullptr) != SQLITE_OK)
            throw std::runtime_error(sqlite3_errmsg(db_));
    }
    sqlite3_stmt* prepared(const char* sql) {
        sqlite3_stmt* statement = nullptr;
        if (sqlite3_prepare_v2(db_, sql, -1, &statement, nullptr) != SQLITE_OK)
            throw std::runtime_error(sqlite3_errmsg(db_));
        return statement;
    }
    static void bind(sqlite3_stmt* statement, int parameter, std::string_view text) {
        sqlite3_bind_text(statement, parameter, text.data(), static_cast<int>(text.size()), SQLITE_TRANSIENT);
    }

    sqlite3* db_ = nullptr;
    sqlite3_stmt* select_ = nullptr;
};

/// Normalised requests. A trigram table finds nothing shorter than three letters, so such requests are left
/// out.
std::vector<Request> wanted(const BenchLibrary& library, std::size_t count) {
    std::vector<Request> requests;
    for (const std::string& line : library.lines(count)) {
        const Request request = parseWantedLine(line, "artist-title").value();
        if (request.artist.size() >= 3 && request.title.size() >= 3)
            requests.push_back({normalize(request.artist), normalize(request.title)});
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

void sizes(benchmark::internal::Benchmark* bench) {
    bench->ArgNames({"tracks", "lines"})->Args({100'000, 100})->Unit(benchmark::kMillisecond);
}
BENCHMARK_CAPTURE(search, fts5, "CREATE VIRTUAL TABLE tracks USING fts5(artist, title, tokenize = 'trigram')",
                  "SELECT rowid FROM tracks WHERE tracks MATCH "
                  "'artist : \"' || ? || '\" AND title : \"' || ? || '\"'")
    ->Name("search_fts5")
    ->Apply(sizes);
BENCHMARK_CAPTURE(search, instr, "CREATE TABLE tracks (artist TEXT, title TEXT)",
                  "SELECT rowid FROM tracks WHERE instr(artist, ?) AND instr(title, ?)")
    ->Name("search_instr")
    ->Apply(sizes);

} // namespace
} // namespace orvalen::bench
