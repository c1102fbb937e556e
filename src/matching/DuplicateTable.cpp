#include "matching/DuplicateTable.h"

#include <algorithm>
#include <unordered_set>

namespace orvalen {
namespace {

bool haveOneKey(const LibraryIndex& index, std::size_t left, std::size_t right) {
    const std::string_view a = index.key(left);
    const std::string_view b = index.key(right);
    return a.data() == b.data() && a.size() == b.size(); // a key is stored once
}

} // namespace

DuplicateTable::DuplicateTable(const LibraryIndex& index) {
    const std::size_t count = index.trackCount();
    for (PositionRange run; run.first < count; run.first = run.last) {
        run.last = run.first + 1;
        while (run.last < count && haveOneKey(index, run.first, run.last))
            ++run.last;
        if (run.size() > 1)
            addFrom(index, run);
    }
}

void DuplicateTable::addFrom(const LibraryIndex& index, PositionRange sameKey) {
    const auto hash = [&index](std::uint32_t position) { return TrackHash()(index.track(position)); };
    const auto equal = [&index](std::uint32_t left, std::uint32_t right) {
        return index.track(left) == index.track(right);
    };
    std::unordered_set<std::uint32_t, decltype(hash), decltype(equal)> seen(sameKey.size(), hash, equal);
    for (std::size_t position = sameKey.first; position < sameKey.last; ++position) {
        const auto [first, isNew] = seen.insert(static_cast<std::uint32_t>(position));
        if (!isNew)
            duplicates_.push_back({static_cast<std::uint32_t>(position), *first});
    }
}

std::size_t DuplicateTable::firstEqual(std::size_t position) const {
    const auto found = std::lower_bound(
        duplicates_.begin(), duplicates_.end(), position,
        [](const Duplicate& duplicate, std::size_t wanted) { return duplicate.position < wanted; });
    return found != duplicates_.end() && found->position == position ? found->first : position;
}

} // namespace orvalen
