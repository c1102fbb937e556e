#pragma once

#include "import/SpotifyService.h"

#include <functional>
#include <string>

namespace orvalen {

struct ContentView;

/// Fetches the playlist at the address, replaces the wanted text by its first 100 entries and calls
/// imported(view). Ignores an address without a path. On failure, writes an error line and leaves the text
/// unchanged. Main thread; returns at once.
void importSpotifyPlaylist(ContentView& view, const std::string& address,
                           std::function<void(ContentView&)> imported, const SpotifyService& service = {});

} // namespace orvalen
