#pragma once

#include "core/Error.h"

#include <string>
#include <string_view>

namespace orvalen {

// Whole files in one step. Any thread; errors carry the system's words for what went wrong.

/// Every byte of the file. What is no file is not waited for: a pipe or a device is an error.
Expected<std::string> readWholeFile(const std::string& path);

/// Replaces the file's content in place. A file that may not be written stays as it was, and so does one on a
/// disk that has no room for the bytes; where none was, a failure leaves none. A device takes the bytes; a
/// pipe is an error.
Expected<void> writeWholeFile(const std::string& path, std::string_view bytes);

/// Writes a temporary file in the same folder and renames it over the destination: a reader sees the old
/// bytes or the new ones, and a failure leaves the old file untouched and no temporary behind.
Expected<void> writeFileAtomically(const std::string& path, std::string_view bytes);

/// Creates the folder with its parents, for this user only; true when it stands afterwards. One that is there
/// keeps its permissions.
bool createFolder(const std::string& path);

} // namespace orvalen
