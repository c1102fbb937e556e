#pragma once

#include "library/PlaylistDatabaseManager.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace orvalen {

struct ContentView;

// Choices that replacePreferredMatches() removed from the database. At the start, for example, the matches of
// the library file replace the table, and choices made after the last scan are not among them. The removed
// choices are kept in `earlierChoices` and in the file "earlier_choices.json" of the support folder, so that
// the results page can offer them again. Main thread. Errors are ignored.

/// If there are more choices, those removed earlier are dropped first.
inline constexpr std::size_t mostEarlierChoices = 5'000;

/// Reads the choices from the file. Does nothing if it cannot be read.
void loadEarlierChoices(ContentView& view);
/// Keeps the choices that replacePreferredMatches(matches) would remove. Call before it.
void keepChoicesReplacedBy(ContentView& view, const PreferredMatches& matches);
/// Removes the choice for the key, because the user has chosen again.
void forgetEarlierChoice(ContentView& view, std::string_view key);
/// Adds a choice again that forgetEarlierChoice() removed.
void keepEarlierChoice(ContentView& view, const std::string& key, const std::string& path);
/// Removes all choices and deletes the file.
void forgetAllEarlierChoices(ContentView& view);

} // namespace orvalen
