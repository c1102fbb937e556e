#pragma once

#include "core/Error.h"

#include <string>
#include <string_view>

namespace orvalen {

// Reading and writing of whole files. Thread-safe. Errors contain the system's description.

/// Returns all bytes of a regular file. A folder, pipe, socket or device fails at once instead of blocking;
/// so does a file of more than 4 GiB.
Expected<std::string> readWholeFile(const std::string& path);

/// Replaces the file's content in place, or creates the file. The old content survives if the file cannot be
/// opened or if the first write fails. It also survives a full disk, if the file system can reserve space. A
/// later failure can damage it. If the file did not exist, a failure deletes the new one. Writes into a
/// device; fails for a pipe.
Expected<void> writeWholeFile(const std::string& path, std::string_view bytes);

/// Writes a temporary file in the same folder and renames it over the destination. Readers see the old bytes
/// or the new ones. On failure, the old file stays unchanged and the temporary file is deleted. Waits for the
/// disk (fsync). A device is written in place, and a pipe fails, as in writeWholeFile().
Expected<void> writeFileAtomically(const std::string& path, std::string_view bytes);

/// Creates the folder and its missing parents with permissions for this user only. Returns whether the folder
/// exists afterwards. Does not change an existing folder.
bool createFolder(const std::string& path);

} // namespace orvalen
