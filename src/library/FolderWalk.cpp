#include "library/FolderWalk.h"

#include "core/Text.h"
#include "platform/Console.h"

#include <algorithm>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <sys/stat.h>

namespace orvalen {
namespace {

struct CloseFolder {
    void operator()(DIR* folder) const { ::closedir(folder); }
};
using OpenFolder = std::unique_ptr<DIR, CloseFolder>;

/// Returns whether the entry is a folder. A link to a folder is not.
bool isFolder(const OpenFolder& parent, const dirent& entry) {
    if (entry.d_type != DT_UNKNOWN)
        return entry.d_type == DT_DIR;
    struct stat status {}; // some file systems do not report the type of an entry
    return ::fstatat(::dirfd(parent.get()), entry.d_name, &status, AT_SYMLINK_NOFOLLOW) == 0 &&
           S_ISDIR(status.st_mode);
}

/// Returns the text with each byte that is not valid UTF-8 written like \xE9.
std::string withEscapedBytes(std::string_view text) {
    static constexpr char digits[] = "0123456789ABCDEF";
    std::string result;
    while (!text.empty()) {
        std::size_t length = 1;
        while (length < text.size() && length < 4 && !isValidUtf8(text.substr(0, length)))
            ++length;
        const std::string_view character = text.substr(0, length);
        if (isValidUtf8(character)) {
            result += character;
            text.remove_prefix(length);
            continue;
        }
        const auto byte = static_cast<unsigned char>(text.front());
        result += {'\\', 'x', digits[byte >> 4], digits[byte & 0x0F]};
        text.remove_prefix(1);
    }
    return result;
}

} // namespace

FolderWalk::FolderWalk(std::vector<std::string> entries, Console& console)
    : console_(console), entries_(std::move(entries)) {}

bool FolderWalk::step() {
    while (!pending_.empty()) {
        Found next = std::move(pending_.back());
        pending_.pop_back();
        if (next.isFolder) {
            items_.push_back(next.path);
            readFolder(std::move(next.path));
            return true;
        }
        items_.push_back(std::move(next.path));
    }
    if (nextEntry_ == entries_.size())
        return false;
    takeEntry(entries_[nextEntry_++]);
    return true;
}

void FolderWalk::takeEntry(const std::string& entry) {
    struct stat status {};
    if (::stat(entry.c_str(), &status) != 0)
        return;
    if (S_ISDIR(status.st_mode))
        readFolder(entry);
    else
        items_.push_back(entry);
}

void FolderWalk::readFolder(std::string folder) {
    const OpenFolder opened(::opendir(folder.c_str()));
    if (!opened)
        return;
    if (!folder.ends_with('/'))
        folder += '/';
    const auto first = static_cast<std::ptrdiff_t>(pending_.size());
    while (const dirent* entry = ::readdir(opened.get()))
        if (!isLeftOut(folder, entry->d_name))
            pending_.push_back({folder + entry->d_name, isFolder(opened, *entry)});
    std::sort(pending_.begin() + first, pending_.end(), [&](const Found& left, const Found& right) {
        return left.path.compare(folder.size(), std::string::npos, right.path, folder.size()) > 0;
    });
}

bool FolderWalk::isLeftOut(std::string_view folder, std::string_view name) {
    if (name.starts_with('.'))
        return true;
    if (isValidUtf8(name))
        return false;
    console_.line("Skipped " + std::string(folder) + withEscapedBytes(name) +
                  ": the name is not valid UTF-8");
    return true;
}

} // namespace orvalen
