#include "app/UpdateCheck.h"

#include "core/JsonReading.h"
#include "core/Url.h"
#include "platform/Browser.h"
#include "platform/Console.h"
#include "platform/HttpSession.h"
#include "platform/MainQueue.h"
#include "platform/Platform.h"

#include <algorithm>

namespace orvalen {
namespace {

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

/// Removes the digits at the start of the text. Returns them without leading zeros.
std::string_view cutOffNumber(std::string_view& text) {
    const std::size_t end = std::min(text.find_first_not_of("0123456789"), text.size());
    std::string_view number = text.substr(0, end);
    text.remove_prefix(end);
    number.remove_prefix(std::min(number.find_first_not_of('0'), number.size()));
    return number;
}

/// Compares numbers of any length: without leading zeros, the longer one is greater.
int compareNumbers(std::string_view left, std::string_view right) {
    if (left.size() != right.size())
        return left.size() < right.size() ? -1 : 1;
    return left.compare(right);
}

void compareWithManifest(Platform& platform, const std::string& currentVersion,
                         const Expected<HttpResponse>& response,
                         const std::function<void(LatestInfo)>& newerVersionFound) {
    if (!response)
        return platform.console.line("Error fetching update info: " + response.error().description);
    const auto manifest = decodeLatestInfo(response->body);
    if (!manifest)
        return platform.console.line("Failed to decode update info.");
    const LatestInfo& info = *manifest;
    platform.console.line("Current version: " + currentVersion);
    platform.console.line("Remote version: " + info.version);
    if (info.notes)
        platform.console.line("Release notes: " + *info.notes);
    if (compareNumerically(info.version, currentVersion) <= 0)
        return platform.console.line("You're up to date.");
    platform.console.line("Update available!");
    platform.mainQueue.post([newerVersionFound, info] { newerVersionFound(info); });
}

std::optional<std::string> owned(const std::optional<std::string_view>& text) {
    return text ? std::optional<std::string>(*text) : std::nullopt;
}

} // namespace

void checkForUpdates(Platform& platform, const std::string& currentVersion,
                     std::function<void(LatestInfo)> newerVersionFound, std::string_view manifestAddress) {
    if (!parseUrl(manifestAddress))
        return platform.console.line("Invalid update URL.");
    HttpRequest request;
    request.address = manifestAddress;
    request.cachePolicy = CachePolicy::reloadIgnoringCache;
    platform.httpSession.send(request, [&platform, currentVersion, found = std::move(newerVersionFound)](
                                           const Expected<HttpResponse>& response) {
        compareWithManifest(platform, currentVersion, response, found);
    });
}

Expected<LatestInfo> decodeLatestInfo(std::string_view bytes) {
    return readJson(std::string(bytes), [](const JsonObject& root) {
        return LatestInfo{std::string(root.text("version")), owned(root.optionalText("url")),
                          owned(root.optionalText("notes"))};
    });
}

int compareNumerically(std::string_view left, std::string_view right) {
    while (!left.empty() && !right.empty()) {
        if (isDigit(left.front()) && isDigit(right.front())) {
            const int order = compareNumbers(cutOffNumber(left), cutOffNumber(right));
            if (order != 0)
                return order;
            continue;
        }
        // The order of UTF-8 bytes is the order of code points.
        const auto leftByte = static_cast<unsigned char>(left.front());
        const auto rightByte = static_cast<unsigned char>(right.front());
        if (leftByte != rightByte)
            return leftByte < rightByte ? -1 : 1;
        left.remove_prefix(1);
        right.remove_prefix(1);
    }
    return static_cast<int>(!left.empty()) - static_cast<int>(!right.empty());
}

void openDownloadPage(Platform& platform, const LatestInfo& info) {
    if (!info.url)
        return;
    const auto url = parseUrl(*info.url);
    if (url && url->isWeb())
        platform.browser.open(*info.url);
}

} // namespace orvalen
