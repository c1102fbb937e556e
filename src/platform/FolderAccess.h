#pragma once

#include "core/Error.h"
#include "core/Location.h"

#include <string>
#include <string_view>

namespace orvalen {

/// The right to read what the user chose, now and at the next start. Main thread.
class FolderAccess {
public:
    virtual ~FolderAccess() = default;
    /// True when the location exists and can be read. Starts are counted, and each may be ended by one stop.
    virtual bool start(const Location& location) = 0;
    virtual void stop(const Location& location) = 0;
    /// Opaque bytes that bring the location back at the next start.
    virtual Expected<std::string> makeBookmark(const Location& location) = 0;
    virtual Expected<Location> resolveBookmark(std::string_view bookmark) = 0;
};

} // namespace orvalen
