#pragma once

#include "matching/LibraryCatalog.h"

#include <atomic>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvalen {

// Which wanted lines a match run would read, and why it would leave the others out. Pure; any thread.

enum class LeftOutReason { noDash, severalDashes, unusualBlank };

struct LeftOutLine {
    std::size_t offset = 0; ///< of its first byte in the text
    std::string text;
    LeftOutReason reason = LeftOutReason::noDash;
};

struct LineCheck {
    std::size_t lineCount = 0; ///< wanted lines, so without empty ones
    std::vector<LeftOutLine> leftOut;

    std::size_t readCount() const { return lineCount - leftOut.size(); }
};

LineCheck checkLines(std::string_view text);

/// A sentence without its full stop: "no dash with blanks".
std::string_view reasonText(LeftOutReason reason);
/// ‘202 lines: 156 are read, 46 are left out’; empty when there are no lines.
std::string checkCaption(const LineCheck& check);

/// How many of the lines find a track in either format.
struct FormatCounts {
    std::size_t artistFirst = 0;
    std::size_t titleFirst = 0;
};

/// Counts lines as a match run would find them. Nothing when `stop` became true before the end.
std::optional<FormatCounts> countFormats(const LibraryCatalog& catalog, const std::vector<std::string>& lines,
                                         const std::atomic<bool>& stop);

/// ‘as Title – Artist, 140 lines would be found; as Artist – Title, 12’ when the format that is not chosen
/// finds clearly more; otherwise empty.
std::string formatHint(const FormatCounts& counts, std::string_view chosenFormat);

} // namespace orvalen
