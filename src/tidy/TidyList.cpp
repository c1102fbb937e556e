#include "tidy/TidyList.h"

#include "app/state/ContentView.h"
#include "core/Keys.h"
#include "core/Text.h"
#include "matching/MatchEngine.h"
#include "tidy/TidyRules.h"

#include <algorithm>
#include <array>

namespace orvalen {
namespace {

using namespace std::string_view_literals;

constexpr std::array spacedDashes = {" - "sv, " \u2013 "sv, " \u2014 "sv};
/// What can follow ‘by’ in a title.
constexpr std::array titleEnds = {"me"sv,    "you"sv, "my side"sv,  "your side"sv,
                                  "night"sv, "day"sv, "the river"sv};
/// Words for versions that the tags of files rarely contain.
constexpr std::array droppedVersions = {"remaster"sv, "remastered"sv, "mono"sv,     "stereo"sv, "single"sv,
                                        "radio"sv,    "album"sv,      "original"sv, "version"sv};

std::string lineOf(const Request& request, std::string_view format) {
    const bool artistFirst = format == artistTitleFormat;
    return (artistFirst ? request.artist : request.title) + std::string(tidyDash) +
           (artistFirst ? request.title : request.artist);
}

/// Returns the pieces between spaced dashes, trimmed.
std::vector<std::string> piecesOf(std::string_view line) {
    std::vector<std::string> pieces;
    std::size_t start = 0;
    for (std::size_t i = 0; i < line.size(); ++i)
        for (const std::string_view dash : spacedDashes)
            if (i >= start && line.substr(i).starts_with(dash)) {
                pieces.emplace_back(trimmed(line.substr(start, i - start)));
                start = i + dash.size();
            }
    pieces.emplace_back(trimmed(line.substr(start)));
    return pieces;
}

/// Reads ‘Title by Artist’.
std::vector<std::string> readingOfBy(std::string_view line, std::string_view format) {
    constexpr std::string_view by = " by ";
    const std::size_t place = toAsciiLower(line).rfind(by);
    if (place == std::string::npos)
        return {};
    const std::string artist(trimmed(line.substr(place + by.size())));
    const std::string title = withoutQuotationMarks(trimmed(line.substr(0, place)));
    if (artist.empty() || title.empty() ||
        std::ranges::find(titleEnds, std::string_view(normalize(artist))) != titleEnds.end())
        return {};
    return {lineOf({artist, title}, format)};
}

/// Returns whether the text names a version that few files are tagged with.
bool isDroppedVersion(std::string_view text) {
    const std::string version = normalize(text);
    return std::ranges::any_of(
        droppedVersions, [&](std::string_view word) { return version.find(word) != std::string::npos; });
}

/// Reads ‘Artist – Title – Version’: the version in brackets, or omitted.
std::vector<std::string> readingsOfSecondDash(const std::vector<std::string>& pieces) {
    if (pieces.size() != 3 || std::ranges::any_of(pieces, &std::string::empty))
        return {};
    const std::string shorter =
        withoutQuotationMarks(pieces[0]) + std::string(tidyDash) + withoutQuotationMarks(pieces[1]);
    const std::string bracketed = shorter + " (" + pieces[2] + ")";
    return isDroppedVersion(pieces[2]) ? std::vector{shorter, bracketed} : std::vector{bracketed, shorter};
}

/// Reads ‘Title by Artist – Version’ and ‘Artist- Title – Version’. Read as they are written, the version
/// would become the title.
std::vector<std::string> readingBeforeVersion(const std::vector<std::string>& pieces,
                                              std::string_view format) {
    if (pieces.size() != 2 || !isDroppedVersion(pieces[1]))
        return {};
    if (auto readings = readingOfBy(pieces[0], format); !readings.empty())
        return readings;
    std::string line = withSpacedDash(pieces[0]);
    return parseWantedLine(line, format) ? std::vector{std::move(line)} : std::vector<std::string>();
}

/// Reads ‘Artist: Title’.
std::vector<std::string> readingOfColon(std::string_view line) {
    const std::size_t place = line.find(": ");
    if (place == std::string_view::npos || line.find(": ", place + 1) != std::string_view::npos)
        return {};
    const std::string_view left = trimmed(line.substr(0, place));
    const std::string_view right = trimmed(line.substr(place + 1));
    if (left.empty() || right.empty())
        return {};
    return {std::string(left) + std::string(tidyDash) + withoutQuotationMarks(right)};
}

/// Reads ‘Artist-Title’ if the line has only one hyphen.
std::vector<std::string> readingOfHyphen(std::string_view line) {
    const std::size_t place = line.find('-');
    if (place == std::string_view::npos || place == 0 || place + 1 == line.size() ||
        line.find('-', place + 1) != std::string_view::npos)
        return {};
    return {std::string(trimmed(line.substr(0, place))) + std::string(tidyDash) +
            std::string(trimmed(line.substr(place + 1)))};
}

/// Returns the text before ‘feat.’ or a similar word.
std::string withoutGuests(const std::string& text) {
    const std::string low = toAsciiLower(text);
    std::size_t end = text.size();
    for (const std::string_view sign :
         {" feat. ", " feat ", " ft. ", " ft ", " featuring ", " (feat", " (ft", " [feat"})
        end = std::min(end, low.find(sign));
    return std::string(trimmed(std::string_view(text).substr(0, end)));
}

std::string replaced(std::string text, std::string_view from, std::string_view to) {
    for (std::size_t place = toAsciiLower(text).find(from); place != std::string::npos;
         place = toAsciiLower(text).find(from, place + to.size()))
        text.replace(place, from.size(), to);
    return text;
}

bool isFound(const LibraryCatalog& catalog, const Request& request) {
    return !findOptions(catalog, request).empty();
}

/// Returns whether numbers at the start of lines are those of a numbered list.
bool isNumbered(const std::vector<std::string_view>& lines) {
    std::size_t numbered = 0;
    std::size_t upwards = 0;
    int last = -1;
    for (const std::string_view line : lines) {
        const int number = numberedLine(line).number;
        if (number < 0)
            continue;
        ++numbered;
        upwards += last >= 0 && number > last;
        last = number;
    }
    return numbered >= 2 && 2 * upwards >= numbered;
}

std::string tidyLine(std::string_view line, bool isNumbered) {
    const NumberedLine numbered = numberedLine(line);
    std::string result(isNumbered && numbered.number >= 0 ? numbered.rest : line);
    for (const NamedTidyRule& rule : tidyRules())
        result = std::string(trimmed(rule.apply(result)));
    return result;
}

} // namespace

std::string tidyText(std::string_view text) {
    const std::vector<std::string_view> lines = wantedLineViews(text);
    const bool numbered = isNumbered(lines);
    std::string result;
    std::size_t end = 0;
    for (const std::string_view line : lines) {
        const auto start = static_cast<std::size_t>(line.data() - text.data());
        result.append(text.substr(end, start - end));
        result += tidyLine(line, numbered);
        end = start + line.size();
    }
    return result.append(text.substr(end));
}

std::vector<std::string> proposedReadings(std::string_view line, std::string_view format) {
    const std::vector<std::string> pieces = piecesOf(line);
    if (parseWantedLine(line, format))
        return readingBeforeVersion(pieces, format);
    if (pieces.size() > 1)
        return readingsOfSecondDash(pieces);
    if (auto readings = readingOfBy(line, format); !readings.empty())
        return readings;
    if (auto readings = readingOfColon(line); !readings.empty())
        return readings;
    return readingOfHyphen(line);
}

std::optional<std::string> foundReading(const LibraryCatalog& catalog, std::string_view line,
                                        std::string_view format) {
    const auto request = parseWantedLine(line, format);
    if (!request || isFound(catalog, *request))
        return std::nullopt;
    const std::array<Request, 5> others = {{
        {withoutGuests(request->artist), withoutGuests(request->title)},
        {replaced(request->artist, " & ", " and "), request->title},
        {replaced(request->artist, " and ", " & "), request->title},
        {request->artist, replaced(request->title, " & ", " and ")},
        {request->artist, replaced(request->title, " and ", " & ")},
    }};
    for (const Request& other : others)
        if ((other.artist != request->artist || other.title != request->title) && isFound(catalog, other))
            return lineOf(other, format);
    return std::nullopt;
}

std::vector<TidyDecision> tidyDecisions(const LibraryCatalog& catalog, std::string_view text,
                                        std::string_view format) {
    std::vector<TidyDecision> decisions;
    for (const std::string_view line : wantedLineViews(text)) {
        std::vector<std::string> readings = proposedReadings(line, format);
        if (auto found = foundReading(catalog, line, format))
            readings.push_back(*std::move(found));
        if (!readings.empty())
            decisions.push_back({static_cast<std::size_t>(line.data() - text.data()), std::string(line),
                                 std::move(readings)});
    }
    return decisions;
}

} // namespace orvalen
