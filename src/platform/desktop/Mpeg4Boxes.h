#pragma once

#include "platform/desktop/ByteSource.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvalen {

/// One of the nested boxes that an MPEG-4 file is made of.
struct Mpeg4Box {
    std::string name; ///< four characters
    ByteRange content;
};

/// The box that begins at the place; nothing when it is cut off or would leave its parent, which ends at end.
std::optional<Mpeg4Box> boxAt(const ByteSource& file, std::uint64_t place, std::uint64_t end);

/// The boxes of the range side by side, up to the first of the name, itself included, or to a damaged one.
std::vector<Mpeg4Box> boxesIn(const ByteSource& file, const ByteRange& range, std::string_view until = {});

} // namespace orvalen
