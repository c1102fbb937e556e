#pragma once

#include <optional>
#include <string>

namespace orvalen {

/// The system's folders for a user's files. Thread-safe.
class UserFolders {
public:
    virtual ~UserFolders() = default;
    /// Returns the absolute path of the user's application-support folder, which need not exist; nullopt if
    /// the system has none.
    virtual std::optional<std::string> applicationSupport() const = 0;
};

} // namespace orvalen
