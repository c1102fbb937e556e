#pragma once

#include "matching/LibraryCatalog.h"
#include "matching/WantedList.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvalen {

// Tidies a wanted text. Thread-safe.

/// Returns the text with all rules applied to every line. Line breaks and empty lines stay. Numbers at the
/// start of lines are removed only if at least two lines have one and at least half of these numbers are
/// larger than the number before.
std::string tidyText(std::string_view text);

/// A line that can be read in another way. The user decides.
struct TidyDecision {
    std::size_t offset = 0; ///< of the line's first byte in the text
    std::string line;
    std::vector<std::string> readings; ///< proposed lines, the most likely first; at least one
};

/// Proposes replacements for a line that a match run leaves out or misreads: ‘Title by Artist’, a colon, a
/// second dash, or a hyphen between two names. Around ‘by’, the sides are put in the order of the format;
/// otherwise they keep their order. Returns an empty list if there is no proposal.
std::vector<std::string> proposedReadings(std::string_view line, std::string_view format);

/// Returns the line without guests (‘feat.’), or with ‘&’ and ‘and’ exchanged, if this finds tracks and the
/// line itself does not. Else returns nullopt.
std::optional<std::string> foundReading(const LibraryCatalog& catalog, std::string_view line,
                                        std::string_view format);

/// Returns the lines of a text that need a decision, in order. Searches the library for each line: do not
/// call it on the main thread.
std::vector<TidyDecision> tidyDecisions(const LibraryCatalog& catalog, std::string_view text,
                                        std::string_view format);

} // namespace orvalen
