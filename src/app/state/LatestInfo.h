#pragma once

#include <optional>
#include <string>

namespace orvalen {

/// The update manifest: the newest version, its download page and its release notes.
struct LatestInfo {
    std::string version;
    std::optional<std::string> url;
    std::optional<std::string> notes;
};

} // namespace orvalen
