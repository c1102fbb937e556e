#pragma once

#include <string>
#include <vector>

namespace orvalen {

struct ContentView;

/// Matches the lines on the match queue, with the library and the line format of this moment. Sets the rows
/// of the state when all lines are done. Main thread; returns at once.
void matchLines(std::vector<std::string> lines, ContentView& view);

/// Builds the catalog of each new library on the match queue, so that the next run need not wait for it. Call
/// once per state. Main thread.
void prepareMatchingOnLibraryChange(ContentView& view);

} // namespace orvalen
