#include "import/SpotifyImport.h"

#include "app/state/ContentView.h"
#include "core/Url.h"
#include "platform/Console.h"

#include <algorithm>
#include <utility>

namespace orvalen {
namespace {

/// The number of entries that are requested. Further entries of the playlist are ignored.
constexpr std::size_t entryLimit = 100;

std::string wantedText(const PlaylistTracksResponse& playlist) {
    std::string text;
    const std::size_t count = std::min(playlist.items.size(), entryLimit);
    for (std::size_t i = 0; i < count; ++i) {
        if (i > 0)
            text += '\n';
        text += importedLine(playlist.items[i]);
    }
    return text;
}

void failed(ContentView& view, const Error& error) {
    view.platform.console.line("Spotify import error: " + error.description);
    view.isMatching.set(false);
}

void takePlaylist(ContentView& view, const PlaylistTracksResponse& playlist) {
    view.inputMode.set(InputMode::textList);
    view.matchInput.set(wantedText(playlist));
    view.isMatching.set(false);
}

} // namespace

void importSpotifyPlaylist(ContentView& view, const std::string& address,
                           std::function<void(ContentView&)> imported, const SpotifyService& service) {
    const auto url = parseUrl(address);
    if (!url)
        return;
    const auto components = pathComponents(*url);
    if (components.empty())
        return;

    view.isMatching.set(true);
    view.matchProgress.set(0);
    const auto withPlaylist =
        [&view, imported = std::move(imported)](const Expected<PlaylistTracksResponse>& playlist) {
            if (!playlist)
                return failed(view, playlist.error());
            takePlaylist(view, *playlist);
            imported(view);
        };
    const auto withToken = [&view, service, playlistID = components.back(),
                            withPlaylist](const tl::expected<SpotifyToken, SpotifyTokenFailure>& token) {
        if (token)
            fetchPlaylistTracks(view.platform.httpSession, service, playlistID, token->access_token,
                                withPlaylist);
        else
            failed(view, token.error());
    };
    fetchSpotifyToken(view.platform.httpSession, view.platform.console, service,
                      view.spotifyClientID + ":" + view.spotifyClientSecret, withToken);
}

} // namespace orvalen
