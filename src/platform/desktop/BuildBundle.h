#pragma once

#include "platform/Bundle.h"

namespace orvalen {

/// The version and build number of this build.
class BuildBundle : public Bundle {
public:
    std::optional<std::string> text(std::string_view key) const override;
};

} // namespace orvalen
