#pragma once

#include "platform/UserFolders.h"

namespace orvalen {

/// $XDG_DATA_HOME when it is an absolute path; otherwise .local/share in $HOME or, where that is no absolute
/// path either, in the home that the system's user list tells.
class XdgUserFolders : public UserFolders {
public:
    std::optional<std::string> applicationSupport() const override;
};

} // namespace orvalen
