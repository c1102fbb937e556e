#include "import/SpotifyService.h"

#include "core/Base64.h"
#include "core/JsonReading.h"
#include "core/Text.h"
#include "core/Url.h"
#include "platform/Console.h"
#include "platform/HttpSession.h"

namespace orvalen {
namespace {

using simdjson::dom::element;
using simdjson::dom::object;

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

/// Prints the refusal and gives it back as the error.
tl::unexpected<Error> refusedToken(Console& console, const HttpResponse& response) {
    const std::string text = isValidUtf8(response.body) ? response.body : "<non-text response>";
    const std::string description = "HTTP " + std::to_string(response.status) + ": " + text;
    console.line("Spotify token fetch failed, " + description);
    return failure(description);
}

Expected<PlaylistTracksResponse::TrackInfo> decodeTrackInfo(const object& item) {
    object track;
    if (item["track"].get(track))
        return failure("The \"track\" of an entry is missing or is not an object.");
    const auto name = requiredText(track, "name");
    if (!name)
        return tl::unexpected(name.error());
    const auto artists = requiredArray(track, "artists");
    if (!artists)
        return tl::unexpected(artists.error());
    PlaylistTracksResponse::TrackInfo result{std::string(*name), {}};
    for (const element value : *artists) {
        object artist;
        if (value.get(artist))
            return failure("An artist is not an object.");
        const auto artistName = requiredText(artist, "name");
        if (!artistName)
            return tl::unexpected(artistName.error());
        result.artists.push_back({std::string(*artistName)});
    }
    return result;
}

} // namespace

void fetchSpotifyToken(HttpSession& session, Console& console, const SpotifyService& service,
                       std::string_view credentials, std::function<void(Expected<SpotifyToken>)> answer) {
    session.send(tokenRequest(service, credentials),
                 [&console, answer = std::move(answer)](Expected<HttpResponse> response) {
                     if (!response)
                         answer(tl::unexpected(response.error()));
                     else if (response->status != 200)
                         answer(refusedToken(console, *response));
                     else
                         answer(decodeSpotifyToken(response->body));
                 });
}

void fetchPlaylistTracks(HttpSession& session, const SpotifyService& service, std::string_view playlistID,
                         std::string_view accessToken,
                         std::function<void(Expected<PlaylistTracksResponse>)> answer) {
    // The identifier goes into the address as it is, so it must not reach beyond its place there.
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
    simdjson::dom::parser parser;
    const auto root = parseObject(parser, bytes);
    if (!root)
        return tl::unexpected(root.error());
    const auto token = requiredText(*root, "access_token");
    if (!token)
        return tl::unexpected(token.error());
    const auto type = requiredText(*root, "token_type");
    if (!type)
        return tl::unexpected(type.error());
    element lifetime; // stays null when it is missing
    if ((*root)["expires_in"].get(lifetime))
        return failure("\"expires_in\" is missing.");
    const auto seconds = wholeNumber(lifetime, "expires_in");
    if (!seconds)
        return tl::unexpected(seconds.error());
    return SpotifyToken{std::string(*token), std::string(*type), *seconds};
}

Expected<PlaylistTracksResponse> decodePlaylistTracks(std::string_view bytes) {
    simdjson::dom::parser parser;
    const auto root = parseObject(parser, bytes);
    if (!root)
        return tl::unexpected(root.error());
    const auto items = requiredArray(*root, "items");
    if (!items)
        return tl::unexpected(items.error());
    PlaylistTracksResponse result;
    for (const element value : *items) {
        object item;
        if (value.get(item))
            return failure("An entry is not an object.");
        auto track = decodeTrackInfo(item);
        if (!track)
            return tl::unexpected(track.error());
        result.items.push_back({std::move(*track)});
    }
    return result;
}

std::string importedLine(const PlaylistTracksResponse::Item& item) {
    std::string line;
    for (const auto& artist : item.track.artists)
        line += (&artist == &item.track.artists.front() ? "" : ", ") + artist.name;
    return line + " - " + item.track.name;
}

} // namespace orvalen
