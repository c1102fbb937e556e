#include "import/SpotifyService.h"

#include "core/Base64.h"
#include "core/JsonReading.h"
#include "core/Text.h"
#include "core/Url.h"
#include "platform/Console.h"
#include "platform/HttpSession.h"

namespace orvalen {
namespace {

HttpRequest tokenRequest(const SpotifyService& service, std::string_view credentials) {
    HttpRequest request;
    request.address = service.accountsAddress + "/api/token";
    request.method = "POST";
    request.headers = {{"Authorization", "Basic " + base64(credentials)},
                       {"Content-Type", "application/x-www-form-urlencoded"}};
    request.body = "grant_type=client_credentials";
    return request;
}

HttpRequest playlistRequest(const SpotifyService& service, std::string_view playlistID,
                            std::string_view accessToken) {
    HttpRequest request;
    request.address = service.apiAddress + "/v1/playlists/" + std::string(playlistID) +
                      "/tracks?fields=items(track(name,artists(name)))&limit=100";
    request.headers = {{"Authorization", "Bearer " + std::string(accessToken)}};
    return request;
}

/// Writes the refusal to the console and returns it as the error.
SpotifyTokenFailure refusedToken(Console& console, const HttpResponse& response) {
    const std::string text = isValidUtf8(response.body) ? response.body : "<non-text response>";
    const std::string description = "HTTP " + std::to_string(response.status) + ": " + text;
    console.line("Spotify token fetch failed, " + description);
    return {Error{description}, "SpotifyTokenError", response.status};
}

PlaylistTracksResponse::TrackInfo readTrackInfo(const JsonObject& track) {
    PlaylistTracksResponse::TrackInfo result{std::string(track.text("name")), {}};
    track.objects("artists", [&](const JsonObject& artist) {
        result.artists.push_back({std::string(artist.text("name"))});
    });
    return result;
}

} // namespace

void fetchSpotifyToken(HttpSession& session, Console& console, const SpotifyService& service,
                       std::string_view credentials,
                       std::function<void(tl::expected<SpotifyToken, SpotifyTokenFailure>)> answer) {
    session.send(tokenRequest(service, credentials), [&console, answer = std::move(answer)](
                                                         Expected<HttpResponse> response) {
        const auto withoutDomain = [](Error error) { return SpotifyTokenFailure{std::move(error)}; };
        if (!response)
            answer(tl::unexpected(withoutDomain(response.error())));
        else if (response->status != 200)
            answer(tl::unexpected(refusedToken(console, *response)));
        else
            answer(decodeSpotifyToken(response->body).map_error(withoutDomain));
    });
}

void fetchPlaylistTracks(HttpSession& session, const SpotifyService& service, std::string_view playlistID,
                         std::string_view accessToken,
                         std::function<void(Expected<PlaylistTracksResponse>)> answer) {
    // The identifier becomes part of the address, so it must be exactly one path component.
    if (!isPathSegment(playlistID))
        return answer(failure("The address does not end in a playlist identifier."));
    session.send(playlistRequest(service, playlistID, accessToken),
                 [answer = std::move(answer)](Expected<HttpResponse> response) {
                     if (!response)
                         answer(tl::unexpected(response.error()));
                     else
                         answer(decodePlaylistTracks(response->body));
                 });
}

Expected<SpotifyToken> decodeSpotifyToken(std::string_view bytes) {
    return readJson(std::string(bytes), [](const JsonObject& root) {
        return SpotifyToken{std::string(root.text("access_token")), std::string(root.text("token_type")),
                            root.wholeNumber("expires_in")};
    });
}

Expected<PlaylistTracksResponse> decodePlaylistTracks(std::string_view bytes) {
    return readJson(std::string(bytes), [](const JsonObject& root) {
        PlaylistTracksResponse result;
        root.objects("items", [&](const JsonObject& item) {
            item.object("track",
                        [&](const JsonObject& track) { result.items.push_back({readTrackInfo(track)}); });
        });
        return result;
    });
}

std::string importedLine(const PlaylistTracksResponse::Item& item) {
    std::string line;
    for (const auto& artist : item.track.artists)
        line += (&artist == &item.track.artists.front() ? "" : ", ") + artist.name;
    return line + " - " + item.track.name;
}

} // namespace orvalen
