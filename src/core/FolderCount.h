#pragma once

#include "core/LibraryIndex.h"

#include <cstdint>
#include <string_view>

namespace orvalen {

/// How many tracks have a path that begins with the folder's; texts are compared, not path components.
std::int64_t countTracksUnderFolder(const LibraryIndex& index, std::string_view folder);

} // namespace orvalen
