#pragma once

#include <string>
#include <vector>

namespace orvalen {

struct ContentView;

/// Matches the lines on the match queue against the library and the line format as they are now; the rows
/// reach the state when all are done. Main thread; returns at once.
void matchLines(std::vector<std::string> lines, ContentView& view);

/// Makes the catalog of each new library on the match queue, so that the next run need not wait for it.
/// Called once for a state. Main thread.
void prepareMatchingOnLibraryChange(ContentView& view);

} // namespace orvalen
