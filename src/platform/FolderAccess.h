#pragma once

#include "core/Error.h"
#include "core/Location.h"

#include <string>
#include <string_view>
#include <vector>

namespace orvalen {

/// The right to read what the user chose, now and at the next start. Main thread.
class FolderAccess {
public:
    virtual ~FolderAccess() = default;
    /// True when the location exists and can be read, or when its drive does not answer within half a second.
    /// Starts are counted, and each may be ended by one stop.
    virtual bool start(const Location& location) = 0;
    /// Starts access to each location and returns those that `start` grants, in the same order. Waits at most
    /// one second for all of them together.
    virtual std::vector<Location> startAll(const std::vector<Location>& locations) {
        std::vector<Location> granted;
        for (const Location& location : locations)
            if (start(location))
                granted.push_back(location);
        return granted;
    }
    virtual void stop(const Location& location) = 0;
    /// True when the location's drive can be removed and the location does not exist now, so that it may be
    /// back when the drive is connected again.
    virtual bool isAway(const Location& location) = 0;
    /// Opaque bytes that bring the location back at the next start.
    virtual Expected<std::string> makeBookmark(const Location& location) = 0;
    virtual Expected<Location> resolveBookmark(std::string_view bookmark) = 0;
};

} // namespace orvalen
