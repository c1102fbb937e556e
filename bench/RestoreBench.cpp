#include "core/Files.h"
#include "core/Keys.h"
#include "core/LibraryIndexBuilder.h"
#include "library/LibraryDocument.h"
#include "support/TemporaryFolder.h"

#include <benchmark/benchmark.h>
#include <filesystem>
#include <fstream>
#include <malloc.h>
#include <rapidjson/document.h>
#include <rapidjson/prettywriter.h>
#include <rapidjson/stringbuffer.h>
#include <unordered_map>

namespace orvalen {
namespace {

/// A library in which every tenth track has an accent and every third a tempo.
LibraryIndex library(std::int64_t tracks) {
    LibraryIndexBuilder builder;
    for (std::int64_t i = 0; i < tracks; ++i) {
        std::string artist = i % 10 == 0 ? "Señor Ritmo " : "The Night Band ";
        artist += std::to_string(i % 9973);
        std::string title = "Last Train Home (Extended Mix ";
        title += std::to_string(i) + ")";
        std::string path = "/home/dj/Music/";
        path.append(artist).append("/").append(artist).append(" - ").append(title).append(".mp3");
        builder.fileTrack({title, artist, "", path, i % 3 == 0 ? std::optional(i % 200) : std::nullopt});
    }
    return builder.finish();
}

std::string libraryText(std::int64_t tracks) {
    std::string text;
    writeLibraryDocument(library(tracks), {}, {{"/home/dj/Music"}},
                         [&](std::string_view whole) { text = whole; });
    return text;
}

void restore(benchmark::State& state) {
    const std::string bytes = libraryText(state.range(0));
    for (auto _ : state)
        benchmark::DoNotOptimize(readLibraryDocument(bytes));
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(bytes.size()));
}

void save(benchmark::State& state) {
    const LibraryIndex index = library(state.range(0));
    for (auto _ : state)
        writeLibraryDocument(index, {}, {},
                             [](std::string_view text) { benchmark::DoNotOptimize(text.data()); });
}

using PlainIndex = std::unordered_map<std::string, std::vector<Track>>;

PlainIndex plainRestored(const std::string& bytes) {
    rapidjson::Document document;
    document.Parse(bytes.data(), bytes.size());
    PlainIndex index;
    for (const auto& value : document["tracks"].GetArray()) {
        Track track{value["title"].GetString(),
                    value["artist"].GetString(),
                    value["genre"].GetString(),
                    value["path"].GetString(),
                    {}};
        if (value.HasMember("bpm"))
            track.bpm = value["bpm"].GetInt64();
        index[libraryKey(track.artist, track.title)].push_back(std::move(track));
    }
    return index;
}

/// The plain way: a tree of values, then a map of lists of records.
void plainRestore(benchmark::State& state) {
    const std::string bytes = libraryText(state.range(0));
    for (auto _ : state)
        benchmark::DoNotOptimize(plainRestored(bytes));
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(bytes.size()));
}

/// The plain way: builds a tree of values and writes it.
void plainSave(benchmark::State& state) {
    const PlainIndex index = plainRestored(libraryText(state.range(0)));
    for (auto _ : state) {
        rapidjson::Document document(rapidjson::kObjectType);
        auto& memory = document.GetAllocator();
        rapidjson::Value tracks(rapidjson::kArrayType);
        const auto text = [&](const std::string& value) { return rapidjson::Value(value.c_str(), memory); };
        for (const auto& [key, list] : index)
            for (const Track& track : list) {
                rapidjson::Value value(rapidjson::kObjectType);
                value.AddMember("title", text(track.title), memory);
                value.AddMember("artist", text(track.artist), memory);
                value.AddMember("genre", text(track.genre), memory);
                value.AddMember("path", text(track.path), memory);
                if (track.bpm)
                    value.AddMember("bpm", *track.bpm, memory);
                tracks.PushBack(value, memory);
            }
        document.AddMember("tracks", tracks, memory);
        rapidjson::StringBuffer buffer;
        rapidjson::PrettyWriter<rapidjson::StringBuffer> writer(buffer);
        document.Accept(writer);
        benchmark::DoNotOptimize(buffer.GetString());
    }
}

/// Returns the resident bytes: "VmRSS" the current number, "VmHWM" the largest since forgetPeak().
std::size_t residentBytes(const char* name) {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);)
        if (line.starts_with(name))
            return std::stoull(line.substr(line.find(':') + 1)) * 1024;
    return 0;
}

void forgetPeak() {
    ::malloc_trim(0);
    std::ofstream("/proc/self/clear_refs") << 5;
}

/// Measures the temporary memory of reading and of writing a library file, as a multiple of the file's size.
void peak(benchmark::State& state) {
    const test::TemporaryFolder folder;
    const std::string path = folder.write("library.orvl", libraryText(state.range(0)));
    const auto fileBytes = static_cast<double>(std::filesystem::file_size(path));
    const auto inFiles = [&](std::size_t least) {
        return (static_cast<double>(residentBytes("VmHWM")) - static_cast<double>(least)) / fileBytes;
    };
    for (auto _ : state) {
        forgetPeak();
        auto document =
            readWholeFile(path).map([](std::string bytes) { return readLibraryDocument(std::move(bytes)); });
        ::malloc_trim(0);
        state.counters["restore_files"] = inFiles(residentBytes("VmRSS"));
        forgetPeak();
        const std::size_t before = residentBytes("VmRSS");
        if (!document || !*document)
            return state.SkipWithError("the file was not read");
        writeLibraryDocument((*document)->index, {}, {}, [&](std::string_view text) {
            if (!writeWholeFile(path, text))
                state.SkipWithError("the file was not written");
        });
        state.counters["save_files"] = inFiles(before);
    }
    state.counters["file_MB"] = fileBytes / 1e6;
}

void sizes(benchmark::internal::Benchmark* bench) {
    bench->ArgName("tracks")->Arg(10'000)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);
}
BENCHMARK(restore)->Name("restore")->Apply(sizes);
BENCHMARK(plainRestore)->Name("restore/plain")->Apply(sizes);
BENCHMARK(peak)->Name("peak")->ArgName("tracks")->Arg(1'000'000)->Iterations(1)->Unit(
    benchmark::kMillisecond);
BENCHMARK(save)->Name("save")->Apply(sizes);
BENCHMARK(plainSave)->Name("save/plain")->Apply(sizes);

} // namespace
} // namespace orvalen
