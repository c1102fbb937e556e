#pragma once

#include "core/Text.h"

#include <string>
#include <string_view>

namespace orvalen {

/// A file or folder that the user named, by its absolute path.
struct Location {
    std::string path;

    friend bool operator==(const Location& left, const Location& right) {
        return canonicallyEqual(left.path, right.path);
    }
};

/// Returns the location without slashes at its end, so that equal folders compare equal.
inline Location locationOf(std::string_view path) {
    while (path.size() > 1 && path.back() == '/')
        path.remove_suffix(1);
    return {std::string(path)};
}

} // namespace orvalen
