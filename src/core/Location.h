#pragma once

#include "core/Text.h"

#include <string>

namespace orvalen {

/// A file or folder that the user named, by its absolute path.
struct Location {
    std::string path;

    friend bool operator==(const Location& left, const Location& right) {
        return canonicallyEqual(left.path, right.path);
    }
};

} // namespace orvalen
