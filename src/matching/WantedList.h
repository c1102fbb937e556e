#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvalen {

struct ContentView;

/// The artist and title that a wanted line asks for, not normalised.
struct Request {
    std::string artist;
    std::string title;
};

/// Returns the non-empty lines of the text, trimmed, in order. Repeated lines stay. Thread-safe.
std::vector<std::string> wantedLines(std::string_view text);
/// Returns the same lines as views into the text.
std::vector<std::string_view> wantedLineViews(std::string_view text);

/// Splits a line at its one dash (hyphen, en dash or em dash) with a space on each side. Returns nullopt if
/// there is no such dash or more than one. `format` is artistTitleFormat or titleArtistFormat. Thread-safe.
std::optional<Request> parseWantedLine(std::string_view line, std::string_view format);

/// Posts the wanted lines to the match queue. In Spotify mode, imports the playlist first and then starts
/// matching its lines. Matches nothing if the library or the text is empty. Main thread; returns at once.
void startMatching(ContentView& view);

} // namespace orvalen
