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

/// Reads the tags of the file. Never fails: the title defaults to the file name without extension, the artist
/// to "Unknown". If the file cannot be read, writes an error line and sets `*unreadable` to true. Worker.
Track readTrackMetadata(MediaAssets& assets, Console& console, const std::string& path,
                        bool* unreadable = nullptr);

/// Returns the tempo from the file's ID3 tag, or nullopt. If reading fails, writes an error line that starts
/// with `failurePrefix`. Worker.
std::optional<std::int64_t> readTempoFrame(MediaAsset& asset, Console& console,
                                           std::string_view failurePrefix);

/// Parses a decimal integer with an optional sign. Returns nullopt for any other text, also for ‘127.5’.
std::optional<std::int64_t> parseBPM(std::string_view text);

/// Asks for a file for the row at the position, reads its tempo on the tag queue, and attaches it. The file
/// becomes a candidate, the selected track, and part of the library. Main thread; returns before the file is
/// attached.
void attachBrowsedFile(ContentView& view, std::size_t row);
/// Attaches the file at `path` to the row as attachBrowsedFile() does, without a dialog.
void attachFile(ContentView& view, std::size_t row, const std::string& path);

} // namespace orvalen
