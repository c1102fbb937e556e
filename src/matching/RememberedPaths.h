#pragma once

#include "library/PlaylistDatabaseManager.h"

#include <cstdint>
#include <optional>
#include <string>

namespace orvalen {

/// The preferred matches as a match run needs them. The table is read once, and again when this program has
/// changed it, because each look into the database locks and unlocks its file. While another program holds
/// the database, only the reading of the table waits for it. Worker thread.
class RememberedPaths {
public:
    explicit RememberedPaths(PlaylistDatabaseManager& database)
        : database_(database), changeCount_(database.changeCount()), table_(database.tryPreferredMatches()) {}

    std::optional<std::string> of(const std::string& key);

private:
    PlaylistDatabaseManager& database_;
    std::uint64_t changeCount_; ///< from before the table was read
    std::optional<PreferredMatches> table_;
};

} // namespace orvalen
