#pragma once

#include "platform/UserFolders.h"

namespace orvalen {

/// Uses $XDG_DATA_HOME if it is an absolute path, else ".local/share" in $HOME, else in the home folder of
/// the system's user database.
class XdgUserFolders : public UserFolders {
public:
    std::optional<std::string> applicationSupport() const override;
};

} // namespace orvalen
