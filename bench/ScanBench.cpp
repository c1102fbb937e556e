#include "MadeMp3.h"
#include "library/AudioMetadata.h"
#include "platform/tags/FileMediaAssets.h"
#include "support/Fakes.h"
#include "support/TemporaryFolder.h"

#include <array>
#include <benchmark/benchmark.h>
#include <chrono>
#include <fcntl.h>
#include <fstream>
#include <string>
#include <unistd.h>
#include <vector>

namespace orvalen {
namespace {

std::string mp3(std::size_t number, std::size_t pictureLength) {
    const Track track{"Song number " + std::to_string(number), "Artist " + std::to_string(number / 8),
                      "House", "", static_cast<std::int64_t>(90 + number % 50)};
    return bench::mp3File(track, pictureLength, 100);
}

/// Real files on the disk, shared by benchmarks with the same parameters.
class Files {
public:
    Files(std::size_t count, std::size_t pictureLength) {
        for (std::size_t i = 0; i < count; ++i)
            paths.push_back(folder_.write(std::to_string(i) + ".mp3", mp3(i, pictureLength)));
    }
    std::vector<std::string> paths;

private:
    test::TemporaryFolder folder_;
};

const Files& files(const benchmark::State& state) {
    static std::size_t count = 0;
    static std::size_t art = 0;
    static std::unique_ptr<Files> made;
    if (!made || count != static_cast<std::size_t>(state.range(0)) ||
        art != static_cast<std::size_t>(state.range(1))) {
        count = static_cast<std::size_t>(state.range(0));
        art = static_cast<std::size_t>(state.range(1));
        made.reset();
        made = std::make_unique<Files>(count, art);
    }
    return *made;
}

/// Returns the number of bytes that this process has read with system calls.
double bytesRead() {
    std::ifstream stream("/proc/self/io");
    std::string name;
    double value = 0;
    stream >> name >> value; // the first line is rchar
    return value;
}

template <typename Read>
void measure(benchmark::State& state, Read read) {
    const std::vector<std::string>& paths = files(state).paths;
    const double before = bytesRead();
    const auto start = std::chrono::steady_clock::now();
    for (auto _ : state)
        for (const std::string& path : paths)
            read(path);
    const std::chrono::duration<double, std::micro> time = std::chrono::steady_clock::now() - start;
    const auto fileCount = static_cast<double>(paths.size()) * static_cast<double>(state.iterations());
    state.counters["us_per_file"] = time.count() / fileCount;
    state.counters["bytes_per_file"] = (bytesRead() - before) / fileCount;
}

void scan(benchmark::State& state) {
    FileMediaAssets assets;
    test::FakeConsole console;
    measure(state, [&](const std::string& path) {
        const Track track = readTrackMetadata(assets, console, path);
        if (!track.bpm)
            state.SkipWithError("a file was not read");
    });
}

void scanRaw(benchmark::State& state) {
    std::array<char, 8192> buffer;
    measure(state, [&](const std::string& path) {
        const int descriptor = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
        if (::read(descriptor, buffer.data(), buffer.size()) <= 0)
            state.SkipWithError("a file was not read");
        ::close(descriptor);
    });
}

void shapes(benchmark::internal::Benchmark* bench) {
    bench->ArgNames({"files", "art"})->Unit(benchmark::kMillisecond);
    for (const std::int64_t art : {0, 300'000})
        bench->Args({3000, art});
}

BENCHMARK(scan)->Apply(shapes);
BENCHMARK(scanRaw)->Name("scan_raw")->Apply(shapes);

} // namespace
} // namespace orvalen
