#include "core/LibraryIndex.h"
#include "core/LibraryTables.h"
#include "core/Text.h"

#include <algorithm>
#include <limits>

namespace orvalen {
namespace {

/// Whether a path begins with a folder, and how many of the path's first bytes settle that.
struct Verdict {
    bool begins = false;
    std::size_t settledBy = 0;
};

bool isAsciiAt(std::string_view text, std::size_t place) {
    return place >= text.size() || static_cast<unsigned char>(text[place]) < 0x80;
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

/// The folder is composed. Accents need a look only where the bytes differ beside one.
Verdict judge(std::string_view path, std::string_view folder) {
    const std::size_t most = std::min(path.size(), folder.size());
    const auto end = path.begin() + static_cast<std::ptrdiff_t>(most);
    const auto differing =
        static_cast<std::size_t>(std::mismatch(path.begin(), end, folder.begin()).first - path.begin());
    if (differing == folder.size() && isAsciiAt(path, differing))
        return {true, differing + 1};
    if (differing < folder.size() && isAsciiAt(path, differing) && isAsciiAt(path, differing + 1) &&
        isAsciiAt(folder, differing))
        return {false, differing + 2};
    return judgeComposed(path, folder, differing + 1);
}

} // namespace

std::int64_t countTracksUnderFolder(const LibraryIndex& index, std::string_view folder) {
    const LibraryTables& tables = *index.body_;
    const std::string wanted = composed(folder);
    const std::size_t tracks = tables.records.size();
    std::size_t count = 0;
    Verdict verdict{false, std::numeric_limits<std::size_t>::max()};
    // Neighbours mostly lie in one folder: where the bytes that settled the last verdict are the same, the
    // path itself need not be fetched from memory.
    for (std::size_t first = 0; first < tracks; first += LibraryTables::pathBlock) {
        const std::size_t last = std::min(first + LibraryTables::pathBlock, tracks);
        if (tables.leastSharedPathLengths[first / LibraryTables::pathBlock] >= verdict.settledBy) {
            count += verdict.begins ? last - first : 0;
            continue;
        }
        for (std::size_t position = first; position < last; ++position) {
            if (tables.sharedPathLengths[position] < verdict.settledBy)
                verdict = judge(tables.records[position].path(), wanted);
            count += verdict.begins ? 1 : 0;
        }
    }
    return static_cast<std::int64_t>(count);
}

} // namespace orvalen
