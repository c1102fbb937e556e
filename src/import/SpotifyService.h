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

/// Where the streaming service is reached; neither address ends in a slash.
struct SpotifyService {
    std::string accountsAddress{configuration::spotifyAccountsAddress};
    std::string apiAddress{configuration::spotifyApiAddress};
};

/// What the accounts service grants. The names are the service's.
struct SpotifyToken {
    std::string access_token;
    std::string token_type;
    std::int64_t expires_in = 0;
};

/// Why no token was granted. The domain and code are set only when the service refused.
struct SpotifyTokenFailure : Error {
    std::string_view domain{}; ///< "SpotifyTokenError"
    int code = 0;              ///< the HTTP status
};

/// The part of a playlist that is asked for.
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

// The requests. Main thread; they return at once and answer there, once. No error carries a credential or a
// token.

/// Asks for a token with the credentials, ‘identifier:secret’. A refusal is a console line of its own.
void fetchSpotifyToken(HttpSession& session, Console& console, const SpotifyService& service,
                       std::string_view credentials,
                       std::function<void(tl::expected<SpotifyToken, SpotifyTokenFailure>)> answer);
/// Asks for the first entries of the playlist. An identifier that is no path component is an error and no
/// request; that answer may come before the call returns.
void fetchPlaylistTracks(HttpSession& session, const SpotifyService& service, std::string_view playlistID,
                         std::string_view accessToken,
                         std::function<void(Expected<PlaylistTracksResponse>)> answer);

Expected<SpotifyToken> decodeSpotifyToken(std::string_view bytes);
/// Fails as a whole when any entry lacks its track, its name, its artists or one artist's name.
Expected<PlaylistTracksResponse> decodePlaylistTracks(std::string_view bytes);

/// The artists, then the title: one wanted line.
std::string importedLine(const PlaylistTracksResponse::Item& item);

} // namespace orvalen
