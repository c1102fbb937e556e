#pragma once

#include "core/Location.h"

#include <optional>
#include <string_view>

namespace orvalen {

class UserFolders;

/// The location of the named file in the folder "Orvalen" of the application-support folder. Creates the
/// folder when missing, never the file; nothing when the system names no application-support folder. Any
/// thread.
std::optional<Location> supportFileURL(const UserFolders& folders, std::string_view name);

} // namespace orvalen
