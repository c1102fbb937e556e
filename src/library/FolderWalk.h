#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace orvalen {

class Console;

/// Lists everything under some entries, a folder a step, so that a walk over a large or slow disk can share
/// its thread with other work. An entry that is a folder gives all that is in it: each item before what it
/// holds, the items of one folder sorted by the bytes of their names. An entry that is a file gives itself.
///
/// Left out are hidden names, which begin with a dot, and, with a console line each, names that are not
/// UTF-8; a folder with all it holds. Links are listed and not followed. What cannot be read is left out
/// silently. One thread at a time.
class FolderWalk {
public:
    FolderWalk(std::vector<std::string> entries, Console& console);

    /// Goes on until one more folder has been read; false when everything is listed.
    bool step();
    /// The absolute paths listed so far; more are appended.
    const std::vector<std::string>& items() const { return items_; }
    /// Absolute paths; call when step() has given false.
    std::vector<std::string> takeItems() { return std::move(items_); }

private:
    struct Found {
        std::string path;
        bool isFolder;
    };

    void takeEntry(const std::string& entry);
    void readFolder(std::string folder);
    bool isLeftOut(std::string_view folder, std::string_view name);

    Console& console_;
    std::vector<std::string> entries_;
    std::size_t nextEntry_ = 0;
    std::vector<Found> pending_; ///< the next one last
    std::vector<std::string> items_;
};

} // namespace orvalen
