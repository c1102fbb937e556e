#include "tidy/LineCheck.h"

#include "app/state/ContentView.h"
#include "matching/MatchEngine.h"
#include "matching/WantedList.h"
#include "tidy/TidyRules.h"

#include <algorithm>
#include <array>

namespace orvalen {
namespace {

/// The hint appears if the other format finds at least this many more lines, and 1.5 times as many.
constexpr std::size_t clearlyMore = 3;

LeftOutReason reasonOf(std::string_view line) {
    if (isRead(withPlainBlanks(line)))
        return LeftOutReason::unusualBlank;
    for (const std::string_view dash : {" - ", " \u2013 ", " \u2014 "})
        if (line.find(dash) != std::string_view::npos)
            return LeftOutReason::severalDashes;
    return LeftOutReason::noDash;
}

std::string linesAre(std::size_t count) {
    return std::to_string(count) + (count == 1 ? " is " : " are ");
}

} // namespace

LineCheck checkLines(std::string_view text) {
    LineCheck check;
    for (const std::string_view line : wantedLineViews(text)) {
        ++check.lineCount;
        if (!isRead(line))
            check.leftOut.push_back(
                {static_cast<std::size_t>(line.data() - text.data()), std::string(line), reasonOf(line)});
    }
    return check;
}

std::string_view reasonText(LeftOutReason reason) {
    switch (reason) {
    case LeftOutReason::noDash:
        return "no dash with spaces";
    case LeftOutReason::severalDashes:
        return "more than one dash with spaces";
    case LeftOutReason::unusualBlank:
        return "an unusual space beside the dash";
    }
    return "";
}

std::string checkCaption(const LineCheck& check) {
    if (check.lineCount == 0)
        return "";
    return std::to_string(check.lineCount) + (check.lineCount == 1 ? " line: " : " lines: ") +
           linesAre(check.readCount()) + "read, " + linesAre(check.leftOut.size()) + "left out";
}

std::optional<FormatCounts> countFormats(const LibraryCatalog& catalog, const std::vector<std::string>& lines,
                                         const std::atomic<bool>& stop) {
    FormatCounts counts;
    for (const std::string& line : lines) {
        if (stop)
            return std::nullopt;
        const auto request = parseWantedLine(line, artistTitleFormat);
        if (!request)
            continue;
        counts.artistFirst += !findOptions(catalog, *request).empty();
        counts.titleFirst += !findOptions(catalog, {request->title, request->artist}).empty();
    }
    return counts;
}

std::string formatHint(const FormatCounts& counts, std::string_view chosenFormat) {
    const bool isArtistFirst = chosenFormat == artistTitleFormat;
    const std::size_t chosen = isArtistFirst ? counts.artistFirst : counts.titleFirst;
    const std::size_t other = isArtistFirst ? counts.titleFirst : counts.artistFirst;
    if (other < chosen + clearlyMore || 2 * other < 3 * chosen)
        return "";
    const std::array names = {"Artist \u2013 Title", "Title \u2013 Artist"};
    return std::string("as ") + names[isArtistFirst ? 1 : 0] + ", " + std::to_string(other) +
           " lines would be found; as " + names[isArtistFirst ? 0 : 1] + ", " + std::to_string(chosen);
}

} // namespace orvalen
