#pragma once

#include "library/PlaylistDatabaseManager.h"

#include <cstddef>
#include <string_view>

namespace orvalen {

struct ContentView;

// Choices that are no longer in the table of preferred matches because other rows replaced it: those of the
// library file at the start, for example, which does not know what was chosen after it was written. They are
// kept in `earlierChoices` and in the file "earlier_choices.json" of the support folder, so that the results
// page can offer them again. Main thread. Errors are silent.

/// When there are more choices, those that were kept first are dropped.
inline constexpr std::size_t mostEarlierChoices = 5'000;

void loadEarlierChoices(ContentView& view);
/// Keeps the choices that replacing the table by the matches removes. To be called before the replacement.
void keepChoicesReplacedBy(ContentView& view, const PreferredMatches& matches);
/// Drops the choice for a key, for which the user has chosen again.
void forgetEarlierChoice(ContentView& view, std::string_view key);
void forgetAllEarlierChoices(ContentView& view);

} // namespace orvalen
