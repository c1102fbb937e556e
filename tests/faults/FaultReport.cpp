#include "faults/FaultReport.h"

#include "core/Files.h"
#include "faults/SmallDisk.h"
#include "support/Folders.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <gtest/gtest.h>

namespace orvalen::test {
namespace {

struct Line {
    std::string flow;
    std::string call;
    std::string outcome;
    std::vector<std::string> faults;

    std::string text() const {
        std::string list;
        for (const std::string& fault : faults)
            list += (list.empty() ? "" : ", ") + fault;
        return "| " + flow + " | " + call + ": " + list + " | " + outcome + " |";
    }
};

std::vector<Line>& lines() {
    static std::vector<Line> all;
    return all;
}

std::string errorName(int error) {
    switch (error) {
    case ENOSPC:
        return "ENOSPC";
    case EIO:
        return "EIO";
    case EACCES:
        return "EACCES";
    default:
        return std::to_string(error);
    }
}

void shortenExports(std::string& flows) {
    const std::string all =
        "export m3u, export m3u8, export pls, export rekordbox, export virtualdj, export serato";
    if (const auto place = flows.find(all); place != std::string::npos)
        flows.replace(place, all.size(), "the six exports");
}

/// The list, with flows that fare alike on one line.
std::vector<Line> merged() {
    std::vector<Line> list;
    for (const Line& line : lines()) {
        const auto same = std::find_if(list.begin(), list.end(), [&](const Line& each) {
            return each.call == line.call && each.outcome == line.outcome && each.faults == line.faults;
        });
        if (same == list.end())
            list.push_back(line);
        else
            same->flow += ", " + line.flow;
    }
    for (Line& line : list)
        shortenExports(line.flow);
    return list;
}

bool standsInTheDocument() {
    const auto document = readWholeFile(ORVALEN_SOURCE_DIR "/docs/reliability.md");
    if (!document) {
        std::printf("docs/reliability.md: %s\n", document.error().description.c_str());
        return false;
    }
    bool all = true;
    for (const Line& line : merged()) {
        if (document->find("\n" + line.text() + "\n") != std::string::npos)
            continue;
        std::printf("docs/reliability.md lacks: %s\n", line.text().c_str());
        all = false;
    }
    return all;
}

} // namespace

std::string nameOf(const Fault& fault) {
    switch (fault.way) {
    case Fault::Way::error:
        return errorName(fault.error);
    case Fault::Way::halfThenOn:
        return "half";
    case Fault::Way::halfThenEnd:
        return "half, then " + errorName(fault.error);
    }
    return {};
}

void report(const std::string& flow, const std::string& call, const std::string& fault,
            const std::string& outcome) {
    auto line = std::find_if(lines().begin(), lines().end(), [&](const Line& each) {
        return each.flow == flow && each.call == call && each.outcome == outcome;
    });
    if (line == lines().end())
        line = lines().insert(lines().end(), Line{flow, call, outcome, {}});
    if (std::find(line->faults.begin(), line->faults.end(), fault) == line->faults.end())
        line->faults.push_back(fault);
}

int runAndReport(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    takeMountsOfOurOwn(); // before there are threads
    const int result = RUN_ALL_TESTS();
    for (const Line& line : merged())
        std::printf("%s\n", line.text().c_str());
    const bool documented = standsInTheDocument();
    return result != 0 ? result : documented ? 0 : 1;
}

} // namespace orvalen::test

int main(int argc, char** argv) {
    return orvalen::test::runAndReport(argc, argv);
}
