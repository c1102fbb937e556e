#include "core/FolderCount.h"

#include "core/LibraryTables.h"
#include "core/Text.h"

#include <algorithm>
#include <cstring>

namespace orvalen {
namespace {

/// Returns the path up to and including its last slash. Composing (NFC) never changes a slash, so folder and
/// name can be composed separately.
std::string_view folderOf(std::string_view path) {
    return path.substr(0, path.size() - lastPathComponent(path).size());
}

std::size_t sharedLength(std::string_view left, std::string_view right) {
    const std::size_t end = std::min(left.size(), right.size());
    constexpr std::size_t word = 8; // comparing eight bytes is one instruction
    std::size_t length = 0;
    while (length + word <= end && std::memcmp(left.data() + length, right.data() + length, word) == 0)
        length += word;
    while (length < end && left[length] == right[length])
        ++length;
    return length;
}

} // namespace

FolderTable::FolderTable(const std::vector<TrackRecord>& records) {
    constexpr std::size_t ahead = 16; // prefetches paths, which are far apart in memory
    std::string_view before;
    for (std::size_t position = 0; position < records.size(); ++position) {
        if (position + ahead < records.size())
            __builtin_prefetch(records[position + ahead].path().data());
        const std::string_view written = folderOf(records[position].path());
        if (written == before && position > 0)
            continue;
        before = written;
        const std::string_view folder =
            isAscii(written) ? written : composedFolders.emplace_back(composed(written));
        const std::size_t shared = runs.empty() ? 0 : sharedLength(runs.back().folder, folder);
        runs.push_back({folder, static_cast<std::uint32_t>(position), static_cast<std::uint32_t>(shared)});
    }
}

std::int64_t countTracksUnderFolder(const LibraryIndex& index, std::string_view folder) {
    const std::vector<FolderTable::Run>& runs = index.body_->folderTable().runs;
    const std::string wanted = composed(folder);
    const std::size_t parentLength = folderOf(wanted).size();
    std::size_t count = 0;
    std::size_t common = 0; // length of the common prefix of the run's folder and `wanted`
    for (std::size_t i = 0; i < runs.size(); ++i) {
        // Most folders differ from `wanted` at the same byte as the folder before, and need not be compared.
        if (runs[i].shared < common)
            common = runs[i].shared;
        else if (runs[i].shared == common)
            common += sharedLength(runs[i].folder.substr(common), std::string_view(wanted).substr(common));
        if (common < parentLength)
            continue;
        const std::size_t last = i + 1 < runs.size() ? runs[i + 1].first : index.trackCount();
        if (common == wanted.size())
            count += last - runs[i].first;
        else if (runs[i].folder.size() == parentLength)
            // The files in the parent of `wanted` can be `wanted` itself or start with it.
            for (std::size_t position = runs[i].first; position < last; ++position)
                count += hasCanonicalPrefix(index.track(position).path, wanted) ? 1U : 0U;
    }
    return static_cast<std::int64_t>(count);
}

} // namespace orvalen
