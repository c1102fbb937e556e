#pragma once

#include "app/state/BuildConfiguration.h"
#include "app/state/LatestInfo.h"
#include "core/Error.h"

#include <functional>
#include <string>
#include <string_view>

namespace orvalen {

struct Platform;

/// Fetches the manifest. If its version is newer than `currentVersion`, calls `newerVersionFound` once,
/// later, on the main thread. Writes console lines in all cases. Main thread; returns at once.
void checkForUpdates(Platform& platform, const std::string& currentVersion,
                     std::function<void(LatestInfo)> newerVersionFound,
                     std::string_view manifestAddress = configuration::updateAddress);

/// Decodes the manifest: a JSON object with "version" and optionally "url" and "notes".
Expected<LatestInfo> decodeLatestInfo(std::string_view bytes);

/// Returns a value less than, equal to or greater than 0. Runs of digits are compared as numbers, other text
/// by code points.
int compareNumerically(std::string_view left, std::string_view right);

/// Opens the manifest's `url` in the browser if it is a web address.
void openDownloadPage(Platform& platform, const LatestInfo& info);

} // namespace orvalen
