#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace orvalen {

class Console;

/// Lists everything below some entries, one folder per step, so that other jobs can run in between. An entry
/// that is a folder yields its content, each folder before what it contains. The items of one folder are
/// sorted by the bytes of their names. An entry that is a file yields itself.
///
/// Skips hidden names (starting with a dot), and names that are not valid UTF-8, with an error line each.
/// Skips the content of skipped folders too. Lists symbolic links but does not follow them. Skips silently
/// what cannot be read. Use from one thread.
class FolderWalk {
public:
    FolderWalk(std::vector<std::string> entries, Console& console);

    /// Reads one more folder. Returns false when everything is listed.
    bool step();
    /// Returns the absolute paths listed so far. More are appended by step().
    const std::vector<std::string>& items() const { return items_; }
    /// Returns all absolute paths. Call when step() has returned false.
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
    std::vector<Found> pending_; ///< the next item is the last element
    std::vector<std::string> items_;
};

} // namespace orvalen
