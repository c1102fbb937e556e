#pragma once

#include "app/state/BuildConfiguration.h"
#include "core/Error.h"

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace orvalen {

class Console;
class HttpSession;

/// Addresses of the streaming service, without a slash at the end.
struct SpotifyService {
    std::string accountsAddress{configuration::spotifyAccountsAddress};
    std::string apiAddress{configuration::spotifyApiAddress};
};

/// The answer of the accounts service. The names are those of the service.
struct SpotifyToken {
    std::string access_token;
    std::string token_type;
    std::int64_t expires_in = 0;
};

/// The reason why there is no token. `domain` and `code` are set only if the service refused.
struct SpotifyTokenFailure : Error {
    std::string_view domain{}; ///< "SpotifyTokenError"
    int code = 0;              ///< HTTP status
};

/// The requested part of a playlist.
struct PlaylistTracksResponse {
    struct Artist {
        std::string name;
    };
    struct TrackInfo {
        std::string name;
        std::vector<Artist> artists;
    };
    struct Item {
        TrackInfo track;
    };
    std::vector<Item> items;
};

// Requests to the service. Main thread. They return at once and call `answer` once on the main thread, later
// unless stated otherwise. Errors never contain credentials or tokens.

/// Requests a token. `credentials` is ‘identifier:secret’. A refusal also writes an error line.
void fetchSpotifyToken(HttpSession& session, Console& console, const SpotifyService& service,
                       std::string_view credentials,
                       std::function<void(tl::expected<SpotifyToken, SpotifyTokenFailure>)> answer);
/// Requests the first 100 entries of a playlist. If `playlistID` is not exactly one path component, calls
/// `answer` with an error before returning.
void fetchPlaylistTracks(HttpSession& session, const SpotifyService& service, std::string_view playlistID,
                         std::string_view accessToken,
                         std::function<void(Expected<PlaylistTracksResponse>)> answer);

/// Decodes the answer of the accounts service. Fails if a member is missing.
Expected<SpotifyToken> decodeSpotifyToken(std::string_view bytes);
/// Fails if one entry lacks its track, a name or the artists.
Expected<PlaylistTracksResponse> decodePlaylistTracks(std::string_view bytes);

/// Returns one wanted line: the artists, joined by ", ", then " - " and the title.
std::string importedLine(const PlaylistTracksResponse::Item& item);

} // namespace orvalen
