#include "faults/Trial.h"

#include "core/Files.h"

#include <filesystem>
#include <gtest/gtest.h>

namespace orvalen::test {
namespace {

namespace fs = std::filesystem;

} // namespace

Trial::Trial(const Flow& flow, bool isOldThere) : flow_(flow) {
    if (flow_.access == Access::read)
        put(flow_.content);
    else if (isOldThere)
        put(std::string(20'000, 'o'));
    before = world.state();
    contentBefore = content();
}

void Trial::act(const std::optional<Fault>& fault) {
    const std::string file = flow_.file(world);
    const std::string beside = (fs::path(file).parent_path() / ".orvalen-").string();
    world.console.clear();
    {
        const FailingCalls calls({file, beside}, fault);
        flow_.act(world);
        world.settle();
        for (const Call call : allCalls())
            counts.push_back(calls.count(call));
    }
    state = world.state();
}

std::optional<std::string> Trial::content() {
    const fs::path path = flow_.file(world);
    for (const auto& entry : fs::directory_iterator(path.parent_path()))
        if (entry.path().string().starts_with(path.string()))
            return readWholeFile(entry.path()).value();
    return std::nullopt;
}

std::vector<std::string> Trial::lines() {
    std::vector<std::string> lines = world.console.lines();
    for (std::string& line : lines)
        if (const auto place = line.find(flow_.file(world)); place != std::string::npos)
            line = line.substr(0, place) + "{}";
    return lines;
}

std::size_t Trial::neighbours() {
    const fs::path folder = fs::path(flow_.file(world)).parent_path();
    return static_cast<std::size_t>(std::distance(fs::directory_iterator(folder), {})) -
           (content() ? 1U : 0U);
}

void Trial::put(const std::string& bytes) {
    ASSERT_TRUE(writeWholeFile(flow_.file(world), bytes));
}

} // namespace orvalen::test
