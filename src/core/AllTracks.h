#pragma once

#include "core/LibraryIndex.h"

#include <ranges>

namespace orvalen {

/// Returns the tracks of the index in library order, as a range of views. The range must not outlive `index`.
inline auto allTracks(const LibraryIndex& index) {
    return std::views::iota(std::size_t{0}, index.trackCount()) |
           std::views::transform([&index](std::size_t position) { return index.track(position); });
}

} // namespace orvalen
