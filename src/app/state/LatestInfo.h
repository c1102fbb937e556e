#pragma once

#include <optional>
#include <string>

namespace orvalen {

/// The update manifest: the newest version, where to get it and what is new.
struct LatestInfo {
    std::string version;
    std::optional<std::string> url;
    std::optional<std::string> notes;
};

} // namespace orvalen
