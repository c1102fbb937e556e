#include "library/SupportFolder.h"

#include "core/Files.h"
#include "platform/UserFolders.h"

namespace orvalen {

std::optional<Location> supportFileURL(const UserFolders& folders, std::string_view name) {
    const auto applicationSupport = folders.applicationSupport();
    if (!applicationSupport)
        return std::nullopt;
    const std::string folder = *applicationSupport + "/Orvalen";
    createFolder(folder); // if this fails, reading or writing the file reports the error
    return Location{folder + "/" + std::string(name)};
}

} // namespace orvalen
