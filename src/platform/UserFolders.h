#pragma once

#include <optional>
#include <string>

namespace orvalen {

/// Where the system keeps a user's files. Any thread.
class UserFolders {
public:
    virtual ~UserFolders() = default;
    /// The absolute path of the user's application-support folder, whether it stands yet or not; nothing when
    /// the system names none.
    virtual std::optional<std::string> applicationSupport() const = 0;
};

} // namespace orvalen
