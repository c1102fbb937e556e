#include "platform/system/XdgUserFolders.h"

#include <cstdlib>
#include <pwd.h>
#include <unistd.h>
#include <vector>

namespace orvalen {
namespace {

/// Returns the path without slashes at its end, or nullopt if it is null or not absolute.
std::optional<std::string> absolutePath(const char* text) {
    if (text == nullptr || *text != '/')
        return std::nullopt;
    std::string path(text);
    path.erase(path.find_last_not_of('/') + 1);
    return path;
}

std::optional<std::string> homeFromUserList() {
    std::vector<char> buffer(std::size_t{16} * 1024);
    passwd entry{};
    passwd* found = nullptr;
    if (::getpwuid_r(::getuid(), &entry, buffer.data(), buffer.size(), &found) != 0 || found == nullptr)
        return std::nullopt;
    return absolutePath(found->pw_dir);
}

} // namespace

std::optional<std::string> XdgUserFolders::applicationSupport() const {
    if (auto dataHome = absolutePath(std::getenv("XDG_DATA_HOME")))
        return dataHome;
    auto home = absolutePath(std::getenv("HOME"));
    if (!home)
        home = homeFromUserList();
    if (!home)
        return std::nullopt;
    return *home + "/.local/share";
}

} // namespace orvalen
