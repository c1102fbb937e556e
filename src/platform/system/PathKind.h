#pragma once

#include <optional>
#include <string>

namespace orvalen {

enum class PathKind { absent, file, folder };

/// Returns the kind of the path, following links. Uses a background thread. Returns nullopt if the drive does
/// not answer within 500 ms, and at once if an earlier call for this path is still waiting. Thread-safe.
std::optional<PathKind> pathKind(const std::string& path);

} // namespace orvalen
