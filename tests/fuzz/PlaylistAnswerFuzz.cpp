#include "Fuzz.h"
#include "core/Url.h"
#include "import/SpotifyService.h"

using namespace orvalen;
using fuzz::require;

namespace {

void checkAddress(std::string_view address) {
    const auto url = parseUrl(address);
    if (!url)
        return;
    require(address.size() >= url->host.size() + url->path.size(), "no part is longer than the whole");
    require(!url->isWeb() || !url->host.empty(), "an address on the web names a host");
    pathComponents(*url);
}

} // namespace

void fuzz::tryInput(std::string_view bytes) {
    checkAddress(bytes);
    if (isPathSegment(bytes)) {
        const auto url = parseUrl("https://host/" + std::string(bytes));
        require(url.has_value(), "a path component can stand in an address");
        require(pathComponents(*url).size() == 1, "and is one component there");
    }
    decodeSpotifyToken(bytes);
    if (const auto tracks = decodePlaylistTracks(bytes))
        for (const auto& item : tracks->items)
            require(importedLine(item).size() >= item.track.name.size(), "a line holds its title");
}
