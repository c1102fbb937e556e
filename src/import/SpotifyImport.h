#pragma once

#include "import/SpotifyService.h"

#include <string>

namespace orvalen {

struct ContentView;

/// Fetches the playlist at the address, puts its entries into the wanted list and matches it. Main thread;
/// returns at once. An address without a path is ignored; a failure is console lines and changes nothing.
void importSpotifyPlaylist(ContentView& view, const std::string& address, const SpotifyService& service = {});

} // namespace orvalen
