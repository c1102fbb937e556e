#include "platform/desktop/BuildBundle.h"

#include "app/state/BuildConfiguration.h"

namespace orvalen {

std::optional<std::string> BuildBundle::text(std::string_view key) const {
    if (key == "CFBundleShortVersionString")
        return std::string(configuration::version);
    if (key == "CFBundleVersion")
        return std::string(configuration::buildNumber);
    return {};
}

} // namespace orvalen
