#pragma once

#include "matching/LibraryCatalog.h"

#include <atomic>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvalen {

// Which wanted lines a match run reads, and why it leaves out the others. Thread-safe.

enum class LeftOutReason { noDash, severalDashes, unusualBlank };

struct LeftOutLine {
    std::size_t offset = 0; ///< of its first byte in the text
    std::string text;
    LeftOutReason reason = LeftOutReason::noDash;
};

struct LineCheck {
    std::size_t lineCount = 0; ///< non-empty lines
    std::vector<LeftOutLine> leftOut;

    std::size_t readCount() const { return lineCount - leftOut.size(); }
};

/// Checks every wanted line of the text.
LineCheck checkLines(std::string_view text);

/// Returns a phrase without a full stop: "no dash with spaces".
std::string_view reasonText(LeftOutReason reason);
/// Returns ‘202 lines: 156 are read, 46 are left out’; empty if there are no lines.
std::string checkCaption(const LineCheck& check);

/// The number of lines that find a track in each format.
struct FormatCounts {
    std::size_t artistFirst = 0;
    std::size_t titleFirst = 0;
};

/// Counts the lines that a match run would find. Returns nullopt if `stop` becomes true before the end. Takes
/// as long as a match run: do not call it on the main thread.
std::optional<FormatCounts> countFormats(const LibraryCatalog& catalog, const std::vector<std::string>& lines,
                                         const std::atomic<bool>& stop);

/// Returns ‘as Title – Artist, 140 lines would be found; as Artist – Title, 12’ if the other format finds
/// clearly more lines, else an empty text.
std::string formatHint(const FormatCounts& counts, std::string_view chosenFormat);

} // namespace orvalen
