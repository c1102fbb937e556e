#include "library/LibraryIndexState.h"

#include "app/state/ContentView.h"

namespace orvalen {

void replaceIndex(ContentView& view, LibraryIndex index) {
    const std::int64_t count = countTracks(index);
    view.trackDict.set(std::move(index));
    view.trackCount.set(count);
}

void clearIndex(ContentView& view) {
    replaceIndex(view, LibraryIndex());
}

} // namespace orvalen
