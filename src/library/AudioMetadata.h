#pragma once

#include "core/Track.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace orvalen {

class Console;
class MediaAsset;
class MediaAssets;
struct ContentView;

/// The file as a track. Never fails: title falls back to the bare name, artist to "Unknown". Sets
/// `unreadable` where it is given and the file cannot be read. Worker thread.
Track readTrackMetadata(MediaAssets& assets, Console& console, const std::string& path,
                        bool* unreadable = nullptr);

/// The tempo that the file's ID3 tag gives; a failed load is one console line beginning with the prefix.
std::optional<std::int64_t> readTempoFrame(MediaAsset& asset, Console& console,
                                           std::string_view failurePrefix);

/// A plain decimal integer and nothing else.
std::optional<std::int64_t> parseBPM(std::string_view text);

/// Lets the user pick a file for the row at the position; the tags are read off the main thread, and the file
/// then becomes the choice of whatever row stands at the position. Main thread; returns before the tags are
/// read.
void attachBrowsedFile(ContentView& view, std::size_t row);
/// The same with a file that the user named in another way.
void attachFile(ContentView& view, std::size_t row, const std::string& path);

} // namespace orvalen
