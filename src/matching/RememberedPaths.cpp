#include "matching/RememberedPaths.h"

#include "library/PlaylistDatabaseManager.h"

#include <utility>

namespace orvalen {

RememberedPaths::RememberedPaths(PlaylistDatabaseManager& database, std::vector<std::string> keys)
    : database_(database), keys_(std::move(keys)), changeCount_(database.changeCount()),
      paths_(database.preferredPaths(keys_)) {}

std::optional<std::string> RememberedPaths::at(std::size_t place) const {
    if (!paths_) // another program holds the database: waiting for it once is enough
        return database_.preferredPathAtOnce(keys_[place]);
    if (database_.changeCount() != changeCount_)
        return database_.preferredPath(keys_[place]);
    return (*paths_)[place];
}

} // namespace orvalen
