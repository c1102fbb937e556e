#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace orvalen {

class PlaylistDatabaseManager;

/// The paths that the user chose for some wanted lines. They are asked for together, because each look into
/// the database locks and unlocks its file, and are as fresh as if each had been asked for by itself: what
/// this program stores meanwhile is seen. While another program holds the database, only the constructor
/// waits for it. Worker thread.
class RememberedPaths {
public:
    RememberedPaths(PlaylistDatabaseManager& database, std::vector<std::string> keys);

    /// The path for the key at the place among the keys.
    std::optional<std::string> at(std::size_t place) const;

private:
    PlaylistDatabaseManager& database_;
    std::vector<std::string> keys_;
    std::uint64_t changeCount_; ///< from before the paths were read
    std::optional<std::vector<std::optional<std::string>>> paths_;
};

} // namespace orvalen
