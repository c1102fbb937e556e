#pragma once

#include "library/PlaylistDatabaseManager.h"

#include <cstdint>
#include <optional>
#include <string>

namespace orvalen {

/// The preferred matches for one match run. Reads the table once, and again after this program has changed
/// it, because each read locks the database file. If another process holds the database, only reading the
/// table waits for it. Worker.
class RememberedPaths {
public:
    explicit RememberedPaths(PlaylistDatabaseManager& database)
        : database_(database), changeCount_(database.changeCount()), table_(database.tryPreferredMatches()) {}

    std::optional<std::string> of(const std::string& key);

private:
    PlaylistDatabaseManager& database_;
    std::uint64_t changeCount_; ///< before the table was read
    std::optional<PreferredMatches> table_;
};

} // namespace orvalen
