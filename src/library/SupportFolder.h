#pragma once

#include "core/Location.h"

#include <optional>
#include <string_view>

namespace orvalen {

class UserFolders;

/// Returns the location of the file `name` in the folder "Orvalen" of the application-support folder. Creates
/// the folder if it is missing, but not the file. Returns nullopt if the system has no application-support
/// folder. Thread-safe.
std::optional<Location> supportFileURL(const UserFolders& folders, std::string_view name);

} // namespace orvalen
