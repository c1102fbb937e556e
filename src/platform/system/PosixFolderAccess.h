#pragma once

#include "platform/FolderAccess.h"
#include "platform/system/MountRoots.h"

#include <chrono>
#include <functional>
#include <memory>

namespace orvalen {

/// Access is what the file system grants: it starts when the location exists and can be read, a folder also
/// searched, and needs no stop. Background threads ask the file system. A location that has not answered in
/// time is granted, and is not waited for again until it answers.
///
/// A bookmark holds the path, whether the location exists just now or not; one that is not ours, or whose
/// path is not absolute, does not resolve.
class PosixFolderAccess : public FolderAccess {
public:
    /// Decides for an absolute path; called on any thread.
    using Question = std::function<bool(const std::string& path)>;

    explicit PosixFolderAccess(MountRoots roots = {});
    explicit PosixFolderAccess(Question isReadable, MountRoots roots = {});

    bool start(const Location& location) override;
    std::vector<Location> startAll(const std::vector<Location>& locations) override;
    void stop(const Location& location) override;
    bool isAway(const Location& location) override;
    Expected<std::string> makeBookmark(const Location& location) override;
    Expected<Location> resolveBookmark(std::string_view bookmark) override;

private:
    struct Unanswered;
    class Questions;
    std::vector<Location> granted(const std::vector<Location>& locations, std::chrono::milliseconds limit);

    Question isReadable_;
    std::shared_ptr<Unanswered> unanswered_;
    MountRoots roots_;
};

} // namespace orvalen
