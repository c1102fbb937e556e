#pragma once

#include "platform/tags/ByteSource.h"

#include <string>
#include <string_view>
#include <vector>

namespace orvalen {

/// One of the nested boxes that an MPEG-4 file is made of.
struct Mpeg4Box {
    std::string name; ///< four characters
    ByteRange content;
    bool cutOff = false; ///< the box says that it is longer than the file
};

/// The boxes that begin in the range, side by side, up to the first of the name, itself included.
std::vector<Mpeg4Box> boxesIn(const ByteSource& file, const ByteRange& range, std::string_view until = {});

} // namespace orvalen
