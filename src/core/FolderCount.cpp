#include "core/FolderCount.h"

#include "core/LibraryTables.h"
#include "core/Text.h"

#include <algorithm>
#include <unordered_map>

namespace orvalen {
namespace {

/// The path up to and including its last slash. A slash never combines with the characters beside it, so the
/// composed path is the composed folder followed by the composed name.
std::string_view folderOf(std::string_view path) {
    return path.substr(0, path.size() - lastPathComponent(path).size());
}

} // namespace

FolderTable::FolderTable(const std::vector<TrackRecord>& records) {
    std::unordered_map<std::string_view, std::size_t> counts;
    std::string_view folder;
    std::size_t* count = nullptr;
    for (const TrackRecord& record : records) {
        const std::string_view path = folderOf(record.path());
        if (count == nullptr || path != folder) { // neighbours mostly lie in one folder
            folder = path;
            count = &counts[path];
        }
        ++*count;
    }
    folders.reserve(counts.size());
    for (const auto& [path, tracks] : counts)
        folders.push_back({composed(path), tracks});
    std::ranges::sort(folders, {}, &Folder::path);
    std::size_t sum = 0;
    for (Folder& each : folders)
        each.countToHere = sum += each.countToHere;
}

std::int64_t countTracksUnderFolder(const LibraryIndex& index, std::string_view folder) {
    using Folder = FolderTable::Folder;
    const std::vector<Folder>& folders = index.body_->folderTable().folders;
    const std::string wanted = composed(folder);
    const auto first = std::ranges::lower_bound(folders, wanted, {}, &Folder::path);
    const auto last = std::partition_point(
        first, folders.end(), [&wanted](const Folder& each) { return each.path.starts_with(wanted); });
    const auto countBefore = [&folders](auto place) {
        return place == folders.begin() ? 0 : std::prev(place)->countToHere;
    };
    std::size_t count = countBefore(last) - countBefore(first);

    // The wanted text may also be a file, or the beginning of the names of some files. Only a parent folder
    // that holds files itself makes the look through all tracks necessary.
    const std::string_view parent = folderOf(wanted);
    if (parent.size() < wanted.size() && std::ranges::binary_search(folders, parent, {}, &Folder::path))
        for (std::size_t position = 0; position < index.trackCount(); ++position) {
            const std::string_view path = index.track(position).path;
            if (hasCanonicalPrefix(path, wanted) && composed(folderOf(path)) == parent)
                ++count;
        }
    return static_cast<std::int64_t>(count);
}

} // namespace orvalen
