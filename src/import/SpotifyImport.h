#pragma once

#include "import/SpotifyService.h"

#include <functional>
#include <string>

namespace orvalen {

struct ContentView;

/// Fetches the playlist at the address, puts its entries into the wanted list and calls imported(view). An
/// address without a path is ignored. On failure, writes an error line and changes nothing. Main thread;
/// returns at once.
void importSpotifyPlaylist(ContentView& view, const std::string& address,
                           std::function<void(ContentView&)> imported, const SpotifyService& service = {});

} // namespace orvalen
