#include "core/FolderCount.h"

#include "core/LibraryTables.h"
#include "core/Text.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <optional>

namespace orvalen {
namespace {

/// Whether a path begins with a folder, and how many of the path's first bytes settle that.
struct Verdict {
    bool begins = false;
    std::size_t settledBy = std::numeric_limits<std::size_t>::max();
    bool isPlain = false; ///< all of these bytes but the last are also the folder's first
};

bool isAscii(std::uint8_t byte) {
    return byte < 0x80;
}

bool isAsciiAt(std::string_view text, std::size_t place) {
    return place >= text.size() || isAscii(static_cast<std::uint8_t>(text[place]));
}

/// An ASCII character never joins what stands before it, so a path can be composed up to any of them.
std::size_t nextAscii(std::string_view path, std::size_t place) {
    while (!isAsciiAt(path, place))
        ++place;
    return place;
}

Verdict judgeComposed(std::string_view path, std::string_view folder, std::size_t differing) {
    for (std::size_t end = nextAscii(path, differing);; end = nextAscii(path, end + 1)) {
        const std::string start = composed(path.substr(0, end));
        if (start.size() >= folder.size() || end >= path.size())
            return {start.starts_with(folder), end + 1};
        if (!folder.starts_with(start))
            return {false, end + 1};
    }
}

/// Of a path that has so many first bytes in common with the folder and goes on with another byte than the
/// folder, 0 at its end; nothing beside an accent. ASCII differs in whatever way it is composed afterwards.
std::optional<Verdict> judgePlain(std::size_t common, std::uint8_t next, std::string_view folder) {
    if (!isAscii(next) || !isAsciiAt(folder, common))
        return std::nullopt;
    return Verdict{common == folder.size(), common + 1, true};
}

/// The folder is composed.
Verdict judge(std::string_view path, std::string_view folder) {
    const auto end = path.begin() + static_cast<std::ptrdiff_t>(std::min(path.size(), folder.size()));
    const auto common =
        static_cast<std::size_t>(std::mismatch(path.begin(), end, folder.begin()).first - path.begin());
    const auto next = static_cast<std::uint8_t>(common < path.size() ? path[common] : '\0');
    if (const auto verdict = judgePlain(common, next, folder))
        return *verdict;
    return judgeComposed(path, folder, common + 1);
}

/// Makes the verdict on a path that on the next one, by how that goes on from it; false where the next one
/// must be looked at itself.
bool follow(Verdict& verdict, PathStep step, std::string_view folder) {
    if (step.shared >= verdict.settledBy)
        return true;
    if (!verdict.isPlain)
        return false;
    const bool goesFurther = step.shared + 1U == verdict.settledBy && step.shared < folder.size() &&
                             step.next == static_cast<std::uint8_t>(folder[step.shared]);
    const auto next = goesFurther ? std::nullopt : judgePlain(step.shared, step.next, folder);
    if (next)
        verdict = *next;
    return next.has_value();
}

} // namespace

std::int64_t countTracksUnderFolder(const LibraryIndex& index, std::string_view folder) {
    const LibraryTables& tables = *index.body_;
    const std::string wanted = composed(folder);
    const std::size_t tracks = tables.records.size();
    std::size_t count = 0;
    Verdict verdict;
    // Neighbours mostly lie in one folder or in folders side by side, so that a path itself hardly ever needs
    // to be fetched from memory.
    for (std::size_t first = 0; first < tracks; first += LibraryTables::pathBlock) {
        const std::size_t last = std::min(first + LibraryTables::pathBlock, tracks);
        if (tables.leastSharedPathLengths[first / LibraryTables::pathBlock] >= verdict.settledBy) {
            count += verdict.begins ? last - first : 0;
            continue;
        }
        for (std::size_t position = first; position < last; ++position) {
            if (!follow(verdict, tables.pathSteps[position], wanted))
                verdict = judge(tables.records[position].path(), wanted);
            count += verdict.begins ? 1 : 0;
        }
    }
    return static_cast<std::int64_t>(count);
}

} // namespace orvalen
