#pragma once

#include "matching/LibraryCatalog.h"
#include "matching/WantedList.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvalen {

// Tidies a whole wanted list. Pure; any thread.

/// The text with every line tidied by the rules; line breaks and empty lines stay. Numbers at the start of
/// lines go only when at least two lines have one and most of them count upwards.
std::string tidyText(std::string_view text);

/// A line that can be read in another way, which only the user can decide.
struct TidyDecision {
    std::size_t offset = 0; ///< of the line's first byte in the text
    std::string line;
    std::vector<std::string> readings; ///< proposed lines, the more likely first; at least one
};

/// What one line may mean: ‘Title by Artist’, a second dash, or a hyphen between two names. Empty for a line
/// that is read as it is. The readings are written in the format.
std::vector<std::string> proposedReadings(std::string_view line, std::string_view format);

/// The line with other words for ‘feat.’ and ‘&’ that finds tracks where the line itself finds none.
std::optional<std::string> foundReading(const LibraryCatalog& catalog, std::string_view line,
                                        std::string_view format);

/// The lines of a text that need a decision, in text order. Searches the library for each line that finds
/// nothing, so never on the main thread.
std::vector<TidyDecision> tidyDecisions(const LibraryCatalog& catalog, std::string_view text,
                                        std::string_view format);

} // namespace orvalen
