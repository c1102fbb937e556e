#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvalen {

struct ContentView;

/// What one wanted line asks for; neither text is normalised.
struct Request {
    std::string artist;
    std::string title;
};

/// The lines of the text, trimmed, without the empty ones, in text order; duplicates stay. Any thread.
std::vector<std::string> wantedLines(std::string_view text);
/// The same lines where they stand in the text.
std::vector<std::string_view> wantedLineViews(std::string_view text);

/// Splits a line at its one spaced dash; nothing when it has none or several. Any thread.
std::optional<Request> parseWantedLine(std::string_view line, std::string_view format);

/// The Match button: hands the wanted lines to the match engine, or the playlist address to its importer.
/// Main thread; returns at once.
void startMatching(ContentView& view);

} // namespace orvalen
