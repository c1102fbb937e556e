#pragma once

#include "core/LibraryIndex.h"

namespace orvalen {

struct ContentView;

/// Sets the index of the state and its track count. Main thread.
void replaceIndex(ContentView& view, LibraryIndex index);
/// Sets an empty index. Main thread.
void clearIndex(ContentView& view);

} // namespace orvalen
