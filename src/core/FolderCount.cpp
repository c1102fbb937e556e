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
    std::unordered_map<std::string_view, std::size_t> numbers;
    std::string_view last;
    std::size_t number = 0;
    for (std::size_t position = 0; position < records.size(); ++position) {
        const std::string_view path = folderOf(records[position].path());
        if (folders.empty() || path != last) { // neighbours mostly lie in one folder
            const auto [known, isNew] = numbers.try_emplace(path, folders.size());
            if (isNew)
                folders.push_back({composed(path), {}, 0});
            number = known->second;
            last = path;
        }
        folders[number].positions.push_back(static_cast<std::uint32_t>(position));
    }
    std::ranges::sort(folders, {}, &Folder::path);
    std::size_t count = 0;
    for (Folder& folder : folders)
        folder.countToHere = count += folder.positions.size();
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

    // The wanted text may also be a file, or the beginning of the names of some files.
    const std::string_view parent = folderOf(wanted);
    if (parent.size() < wanted.size())
        for (const Folder& each : std::ranges::equal_range(folders, parent, {}, &Folder::path))
            count +=
                static_cast<std::size_t>(std::ranges::count_if(each.positions, [&](std::uint32_t position) {
                    return hasCanonicalPrefix(index.track(position).path, wanted);
                }));
    return static_cast<std::int64_t>(count);
}

} // namespace orvalen
