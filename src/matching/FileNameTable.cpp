#include "matching/FileNameTable.h"

#include "core/Keys.h"
#include "core/Text.h"

#include <algorithm>
#include <functional>
#include <string>

namespace orvalen {
namespace {

std::uint32_t hashOf(std::string_view key) {
    return static_cast<std::uint32_t>(std::hash<std::string_view>{}(key));
}

} // namespace

FileNameTable::FileNameTable(const LibraryIndex& index) {
    entries_.reserve(index.trackCount());
    std::string key;
    for (std::size_t position = 0; position < index.trackCount(); ++position) {
        normalizeInto(key, bareName(index.track(position).path));
        entries_.push_back({hashOf(key), static_cast<std::uint32_t>(position)});
    }
    std::sort(entries_.begin(), entries_.end());
}

std::vector<std::size_t> FileNameTable::find(const LibraryIndex& index, std::string_view key) const {
    std::vector<std::size_t> positions;
    for (const Entry& entry : std::ranges::equal_range(entries_, hashOf(key), {}, &Entry::hash))
        if (fileNameKey(index.track(entry.position).path) == key)
            positions.push_back(entry.position);
    return positions;
}

} // namespace orvalen
