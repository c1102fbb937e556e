#pragma once

#include "core/Location.h"

#include <string>
#include <string_view>

namespace orvalen {

struct ContentView;

/// Asks for a DJEP export and reads it into the wanted list. Main thread; returns before the dialog is
/// answered.
void importDJEPCSV(ContentView& view);
/// Reads the file into the wanted list; a file that cannot be read is one console line and changes nothing.
void parseDJEPCSV(ContentView& view, const Location& file);
/// The wanted lines of the export's text, artist first, joined by line feeds. Any thread.
std::string wantedTextOfDJEP(std::string_view csv, bool ignoreDoNotPlay);

} // namespace orvalen
