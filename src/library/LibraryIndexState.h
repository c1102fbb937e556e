#pragma once

#include "core/LibraryIndex.h"

namespace orvalen {

struct ContentView;

/// Makes the index the visible one and counts it anew. Main thread.
void replaceIndex(ContentView& view, LibraryIndex index);
void clearIndex(ContentView& view);

} // namespace orvalen
