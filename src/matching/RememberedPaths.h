#pragma once

#include "library/PlaylistDatabaseManager.h"

#include <cstdint>
#include <optional>
#include <string>

namespace orvalen {

/// The preferred matches for one match run. Reads the table once, because each read locks the database file,
/// and again after this program has changed it. If another process holds the lock, reading the table waits,
/// and of() then reads single paths without waiting. Match queue.
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
