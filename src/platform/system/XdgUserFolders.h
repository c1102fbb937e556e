#pragma once

#include "platform/UserFolders.h"

namespace orvalen {

/// The application support folder is $XDG_DATA_HOME if that is an absolute path. Otherwise it is
/// ".local/share" in $HOME, or in the home folder that the system's user database names.
class XdgUserFolders : public UserFolders {
public:
    std::optional<std::string> applicationSupport() const override;
};

} // namespace orvalen
