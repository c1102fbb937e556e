#include "MadeMp3.h"
#include "PageCache.h"
#include "SlowDrive.h"
#include "library/AudioMetadata.h"
#include "platform/tags/FileMediaAssets.h"
#include "support/Fakes.h"
#include "support/TemporaryFolder.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <benchmark/benchmark.h>
#include <cstdlib>
#include <fcntl.h>
#include <fstream>
#include <memory>
#include <string>
#include <thread>
#include <unistd.h>
#include <vector>

namespace orvalen {
namespace {

using namespace std::chrono_literals;

/// Tagged files with the tempo after the picture. The picture's blocks are reserved but not written, because
/// no reader reads them.
class Files {
public:
    Files(std::size_t count, std::size_t picture) : pictureLength(picture) {
        for (std::size_t i = 0; i < count; ++i)
            paths.push_back(makeFile(i));
        ::sync();
    }

    std::string folder() const { return folder_.path(); }

    std::vector<std::string> paths;
    std::size_t pictureLength;

private:
    std::string makeFile(std::size_t number) {
        const std::string texts = bench::textFrame("TIT2", "Song number " + std::to_string(number)) +
                                  bench::textFrame("TPE1", "Artist " + std::to_string(number / 8));
        const std::string tempo = bench::textFrame("TBPM", "128");
        const std::string picture = "APIC" + bench::bigEndian(pictureLength) + std::string(2, '\0');
        const std::size_t length = texts.size() + picture.size() + pictureLength + tempo.size();
        std::string tag("ID3\3\0\0", 6);
        for (int shift = 21; shift >= 0; shift -= 7)
            tag += static_cast<char>(length >> shift & 0x7F);
        const std::string head = tag + texts + picture;
        std::string path = folder_.write(std::to_string(number) + ".mp3", head);
        const int file = ::open(path.c_str(), O_WRONLY | O_CLOEXEC);
        const auto behind = static_cast<off_t>(head.size() + pictureLength);
        if (::posix_fallocate(file, 0, behind + 50'000) != 0 ||
            ::pwrite(file, tempo.data(), tempo.size(), behind) < 0)
            std::abort();
        ::close(file);
        return path;
    }

    test::TemporaryFolder folder_;
};

const Files& files(const benchmark::State& state) {
    static std::unique_ptr<Files> made;
    const auto count = static_cast<std::size_t>(state.range(0));
    const auto picture = static_cast<std::size_t>(state.range(1));
    if (!made || made->paths.size() != count || made->pictureLength != picture) {
        made.reset();
        made = std::make_unique<Files>(count, picture);
    }
    return *made;
}

/// Reads the tags as a scan does, with or without reading ahead.
void readAll(benchmark::State& state, const Files& files, bool isAhead) {
    FileMediaAssets assets;
    test::FakeConsole console;
    const auto ahead = isAhead ? assets.startReadAhead() : nullptr;
    std::size_t expected = 0;
    for (std::size_t read = 0; read < files.paths.size(); ++read) {
        for (; ahead && expected < std::min(files.paths.size(), read + MediaReadAhead::mostFiles); ++expected)
            ahead->expect(files.paths[expected]);
        if (!readTrackMetadata(assets, console, files.paths[read]).bpm)
            state.SkipWithError("a file was not read");
        if (ahead)
            ahead->passOne();
    }
}

template <typename Read>
void measureCold(benchmark::State& state, Read read) {
    const Files& made = files(state);
    for (auto _ : state) {
        state.PauseTiming();
        const bool isCold = bench::dropFromCache(made.paths);
        state.ResumeTiming();
        if (!isCold) {
            state.SkipWithError("skipped: the page cache of this folder cannot be dropped");
            return;
        }
        read(made);
    }
}

void readPlaces(const std::string& path, std::size_t pictureLength) {
    std::array<char, 4096> buffer{};
    const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    benchmark::DoNotOptimize(::pread(file, buffer.data(), buffer.size(), 0));
    if (pictureLength > 0)
        benchmark::DoNotOptimize(
            ::pread(file, buffer.data(), buffer.size(), static_cast<off_t>(pictureLength + 60)));
    ::close(file);
}

void scanWarm(benchmark::State& state) {
    const Files& made = files(state);
    readAll(state, made, false);
    for (auto _ : state)
        readAll(state, made, state.range(2) != 0);
}

void scanCold(benchmark::State& state) {
    measureCold(state, [&](const Files& made) { readAll(state, made, state.range(2) != 0); });
}

void scanColdRaw(benchmark::State& state) {
    measureCold(state, [](const Files& made) {
        for (const std::string& path : made.paths)
            readPlaces(path, made.pictureLength);
    });
}

void scanColdRaw16(benchmark::State& state) {
    measureCold(state, [](const Files& made) {
        std::atomic<std::size_t> next = 0;
        std::vector<std::jthread> threads;
        for (int i = 0; i < 16; ++i)
            threads.emplace_back([&] {
                for (std::size_t file = next++; file < made.paths.size(); file = next++)
                    readPlaces(made.paths[file], made.pictureLength);
            });
    });
}

void scanSlow(benchmark::State& state, const bench::DriveKind& kind) {
    const Files& made = files(state);
    for (auto _ : state) {
        const bench::SlowDrive drive(made.folder(), kind);
        readAll(state, made, state.range(2) != 0);
    }
}

void common(benchmark::internal::Benchmark* bench) {
    bench->Unit(benchmark::kMillisecond)->UseRealTime();
}
void raw(benchmark::internal::Benchmark* bench) {
    bench->ArgNames({"files", "art"})->Args({6000, 300'000})->Iterations(2)->Apply(common);
}
void both(benchmark::internal::Benchmark* bench) {
    bench->ArgNames({"files", "art", "ahead"})->Apply(common);
}
void slow(benchmark::internal::Benchmark* bench) {
    bench->Args({100, 300'000, 0})->Args({100, 300'000, 1})->Iterations(1)->Apply(both);
}

BENCHMARK(scanWarm)
    ->Name("scan_warm")
    ->Args({6000, 300'000, 0})
    ->Args({6000, 300'000, 1})
    ->Apply(both)
    ->Repetitions(5)
    ->ReportAggregatesOnly();
BENCHMARK(scanCold)
    ->Name("scan_cold")
    ->Args({6000, 300'000, 0})
    ->Args({6000, 300'000, 1})
    ->Iterations(2)
    ->Apply(both);
BENCHMARK(scanColdRaw)->Name("scan_cold_raw")->Apply(raw);
BENCHMARK(scanColdRaw16)->Name("scan_cold_raw16")->Apply(raw);
// A hard disk, a network drive, and a hard disk whose content the system does not cache.
BENCHMARK_CAPTURE(scanSlow, rotating, {5ms, false, true})->Name("scan_rotating")->Apply(slow);
BENCHMARK_CAPTURE(scanSlow, network, {20ms, true, true})->Name("scan_network")->Apply(slow);
BENCHMARK_CAPTURE(scanSlow, uncached, {2ms, false, false})->Name("scan_uncached")->Apply(slow);

} // namespace
} // namespace orvalen
