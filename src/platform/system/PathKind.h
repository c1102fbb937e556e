#pragma once

#include <optional>
#include <string>

namespace orvalen {

enum class PathKind { absent, file, folder };

/// Returns what the path leads to, links followed. A background thread asks the file system. Returns nullopt
/// when the drive does not answer within half a second, and at once while an earlier question for the same
/// path is unanswered. Thread-safe.
std::optional<PathKind> pathKind(const std::string& path);

} // namespace orvalen
