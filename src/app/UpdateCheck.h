#pragma once

#include "app/state/BuildConfiguration.h"
#include "app/state/LatestInfo.h"
#include "core/Error.h"

#include <functional>
#include <string>
#include <string_view>

namespace orvalen {

struct Platform;

/// Fetches the manifest and calls back, once and on the main thread, when its version is newer. Console lines
/// tell the rest. Main thread; returns at once.
void checkForUpdates(Platform& platform, const std::string& currentVersion,
                     std::function<void(LatestInfo)> newerVersionFound,
                     std::string_view manifestAddress = configuration::updateAddress);

Expected<LatestInfo> decodeLatestInfo(std::string_view bytes);

/// Below, equal to or above 0 as left is smaller, equal or greater; runs of digits compare by their value.
int compareNumerically(std::string_view left, std::string_view right);

/// The alert's "Download": opens the manifest's address when it is a web address.
void openDownloadPage(Platform& platform, const LatestInfo& info);

} // namespace orvalen
