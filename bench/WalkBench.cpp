#include "MadeLibrary.h"
#include "library/FolderWalk.h"
#include "support/Fakes.h"
#include "support/TemporaryFolder.h"

#include <benchmark/benchmark.h>
#include <dirent.h>
#include <filesystem>
#include <fstream>
#include <memory>

namespace orvalen {
namespace {

/// Returns a folder tree of empty files, as in a generated library. Keeps only one tree.
const std::string& tree(std::int64_t files) {
    static std::int64_t made = 0;
    static std::unique_ptr<test::TemporaryFolder> folder;
    if (made != files) {
        folder.reset();
        folder = std::make_unique<test::TemporaryFolder>();
        test::MadeLibrary library;
        std::string last;
        for (std::int64_t i = 0; i < files; ++i) {
            const std::string path = folder->path() + library.nextTrack().path;
            std::string parent = path.substr(0, path.rfind('/'));
            if (parent != last)
                std::filesystem::create_directories(parent);
            last = std::move(parent);
            std::ofstream(path).flush();
        }
        made = files;
    }
    return folder->path();
}

void walk(benchmark::State& state) {
    const std::string& root = tree(state.range(0));
    std::size_t items = 0;
    for (auto _ : state) {
        test::FakeConsole console;
        FolderWalk walk({root}, console);
        while (walk.step()) {
        }
        items = walk.takeItems().size();
    }
    state.counters["items"] = static_cast<double>(items);
}

std::size_t readNames(const std::string& folder) {
    DIR* const opened = ::opendir(folder.c_str());
    std::size_t items = 0;
    while (const dirent* entry = ::readdir(opened)) {
        if (entry->d_name[0] == '.')
            continue;
        ++items;
        if (entry->d_type == DT_DIR)
            items += readNames(folder + "/" + entry->d_name);
    }
    ::closedir(opened);
    return items;
}

/// Reads the names only, without keeping or sorting them.
void plainWalk(benchmark::State& state) {
    const std::string& root = tree(state.range(0));
    std::size_t items = 0;
    for (auto _ : state)
        items = readNames(root);
    state.counters["items"] = static_cast<double>(items);
}

void sizes(benchmark::internal::Benchmark* bench) {
    bench->ArgName("files")->Unit(benchmark::kMillisecond);
}
BENCHMARK(walk)->Name("walk")->Apply(sizes)->Arg(3'000);
BENCHMARK(plainWalk)->Name("walk/plain")->Apply(sizes)->Arg(3'000);
BENCHMARK(walk)->Name("walk")->Apply(sizes)->Arg(30'000);
BENCHMARK(plainWalk)->Name("walk/plain")->Apply(sizes)->Arg(30'000);

} // namespace
} // namespace orvalen
