#include "matching/RememberedPaths.h"

namespace orvalen {

std::optional<std::string> RememberedPaths::of(const std::string& key) {
    if (const auto count = database_.changeCount(); count != changeCount_) {
        changeCount_ = count;
        table_ = database_.tryPreferredMatches();
    }
    if (!table_) // another process holds the database; the constructor has waited for it
        return database_.preferredPathAtOnce(key);
    const auto match = table_->find(key);
    return match == table_->end() ? std::nullopt : std::optional(match->second);
}

} // namespace orvalen
