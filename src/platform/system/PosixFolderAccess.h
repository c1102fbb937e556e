#pragma once

#include "platform/FolderAccess.h"
#include "platform/system/MountRoots.h"

#include <chrono>
#include <functional>
#include <memory>

namespace orvalen {

/// Grants access to locations that exist and that this process may read. A folder must also be searchable.
/// stop() does nothing. Background threads check the locations. If a check takes too long, access is granted,
/// and later calls do not wait for this location until the check has ended.
///
/// A bookmark contains the path. The location need not exist. Resolving fails for bytes that are not our
/// bookmark or contain no absolute path.
class PosixFolderAccess : public FolderAccess {
public:
    /// Decides whether a path can be read. Called on any thread.
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
