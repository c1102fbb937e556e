#pragma once

#include "core/Error.h"
#include "core/Location.h"

#include <string>
#include <string_view>
#include <vector>

namespace orvalen {

/// Access to the files that the user chose, now and after a restart. Main thread.
class FolderAccess {
public:
    virtual ~FolderAccess() = default;
    /// Starts access. Returns whether the location exists and can be read; also true if its drive does not
    /// answer within half a second. Each successful start() may be ended by one stop().
    virtual bool start(const Location& location) = 0;
    /// Starts access to each location. Returns those for which start() returns true, in the same order. Waits
    /// at most one second for all of them together.
    virtual std::vector<Location> startAll(const std::vector<Location>& locations) {
        std::vector<Location> granted;
        for (const Location& location : locations)
            if (start(location))
                granted.push_back(location);
        return granted;
    }
    virtual void stop(const Location& location) = 0;
    /// Returns whether the location is on a removable drive and does not exist now.
    virtual bool isAway(const Location& location) = 0;
    /// Returns opaque bytes from which resolveBookmark() gets the location after a restart.
    virtual Expected<std::string> makeBookmark(const Location& location) = 0;
    virtual Expected<Location> resolveBookmark(std::string_view bookmark) = 0;
};

} // namespace orvalen
