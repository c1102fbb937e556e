#pragma once

#include "core/Location.h"

#include <string>
#include <string_view>

namespace orvalen {

struct ContentView;

/// Asks for a CSV file that DJEP exported and reads it into the wanted text. Main thread; returns before the
/// dialog is answered.
void importDJEPCSV(ContentView& view);
/// Replaces the wanted text by the requests in the file. If the file cannot be read, writes an error line and
/// changes nothing. Main thread.
void parseDJEPCSV(ContentView& view, const Location& file);
/// Returns one wanted line "Artist - Title" per CSV row with an artist and a title, joined by line feeds.
/// Skips rows of the kind "Do Not Play" if `ignoreDoNotPlay`. Thread-safe.
std::string wantedTextOfDJEP(std::string_view csv, bool ignoreDoNotPlay);

} // namespace orvalen
