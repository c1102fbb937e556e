#pragma once

#include "platform/Bundle.h"

namespace orvalen {

/// The version and the build number that the build fixed.
class BuildBundle : public Bundle {
public:
    std::optional<std::string> text(std::string_view key) const override;
};

} // namespace orvalen
