#pragma once

#include "platform/FolderAccess.h"

namespace orvalen {

/// Access is what the file system grants: it starts when the location is there and can be read, a folder also
/// searched, and needs no stop. A bookmark holds the path, whether the location is there just now or not; one
/// that is not ours, or whose path is not absolute, does not resolve.
class PosixFolderAccess : public FolderAccess {
public:
    bool start(const Location& location) override;
    void stop(const Location& location) override;
    Expected<std::string> makeBookmark(const Location& location) override;
    Expected<Location> resolveBookmark(std::string_view bookmark) override;
};

} // namespace orvalen
