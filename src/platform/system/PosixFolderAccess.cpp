#include "platform/system/PosixFolderAccess.h"

#include "core/Text.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace orvalen {
namespace {

/// What our bookmarks begin with; the digit at the end is the version of what follows.
constexpr std::string_view bookmarkMark = "orvalen-location-1:";

bool isUsablePath(std::string_view path) {
    return path.starts_with('/') && path.find('\0') == std::string_view::npos && isValidUtf8(path);
}

} // namespace

bool PosixFolderAccess::start(const Location& location) {
    if (!isUsablePath(location.path))
        return false;
    struct stat status {};
    if (::stat(location.path.c_str(), &status) != 0)
        return false;
    const int needed = S_ISDIR(status.st_mode) ? R_OK | X_OK : R_OK;
    return ::faccessat(AT_FDCWD, location.path.c_str(), needed, AT_EACCESS) == 0;
}

void PosixFolderAccess::stop(const Location&) {}

Expected<std::string> PosixFolderAccess::makeBookmark(const Location& location) {
    if (!isUsablePath(location.path))
        return failure("The location is not an absolute path.");
    return std::string(bookmarkMark) + location.path;
}

Expected<Location> PosixFolderAccess::resolveBookmark(std::string_view bookmark) {
    if (!bookmark.starts_with(bookmarkMark))
        return failure("The bookmark is not one of this program's.");
    const std::string_view path = bookmark.substr(bookmarkMark.size());
    if (!isUsablePath(path))
        return failure("The bookmark leads to no absolute path.");
    return Location{std::string(path)};
}

} // namespace orvalen
