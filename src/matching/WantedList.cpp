#include "matching/WantedList.h"

#include "app/state/ContentView.h"
#include "core/Text.h"
#include "import/SpotifyImport.h"
#include "matching/MatchRun.h"

#include <algorithm>

namespace orvalen {
namespace {

constexpr std::string_view spacedDash = " - ";
constexpr std::string_view enDash = "\u2013";
constexpr std::string_view emDash = "\u2014";

constexpr std::string_view firstBytesOfBreaks = "\n\v\f\r\xC2\xE2";

/// Returns the length of the line break at `place`, or 0. CR LF counts as two breaks; the empty line between
/// them is dropped later.
std::size_t lineBreakAt(std::string_view text, std::size_t place) {
    const char c = text[place];
    if (c >= '\n' && c <= '\r')
        return 1;
    const std::string_view rest = text.substr(place);
    if (rest.starts_with("\u0085"))
        return 2;
    return rest.starts_with("\u2028") || rest.starts_with("\u2029") ? 3 : 0;
}

std::string withPlainDashes(std::string_view line) {
    std::string result;
    result.reserve(line.size());
    while (!line.empty()) {
        const std::size_t plain = std::min(line.find(enDash.front(), 1), line.size());
        if (line.starts_with(enDash) || line.starts_with(emDash))
            result.append(1, '-').append(line.substr(enDash.size(), plain - enDash.size()));
        else
            result.append(line.substr(0, plain));
        line.remove_prefix(plain);
    }
    return result;
}

} // namespace

std::vector<std::string> wantedLines(std::string_view text) {
    const std::vector<std::string_view> lines = wantedLineViews(text);
    return {lines.begin(), lines.end()};
}

std::vector<std::string_view> wantedLineViews(std::string_view text) {
    std::vector<std::string_view> lines;
    const auto add = [&lines](std::string_view piece) {
        if (const std::string_view line = trimmed(piece); !line.empty())
            lines.push_back(line);
    };
    std::size_t start = 0;
    for (std::size_t place = 0;;) {
        place = text.find_first_of(firstBytesOfBreaks, place);
        if (place == std::string_view::npos)
            break;
        const std::size_t length = lineBreakAt(text, place);
        if (length == 0) {
            ++place;
            continue;
        }
        add(text.substr(start, place - start));
        place += length;
        start = place;
    }
    add(text.substr(start));
    return lines;
}

std::optional<Request> parseWantedLine(std::string_view line, std::string_view format) {
    const std::string plain = withPlainDashes(line);
    const std::string_view text = plain;
    const std::size_t dash = text.find(spacedDash);
    if (dash == std::string_view::npos)
        return std::nullopt;
    const std::string_view rest = text.substr(dash + spacedDash.size());
    if (rest.find(spacedDash) != std::string_view::npos)
        return std::nullopt;
    std::string first(trimmedOfBlanks(text.substr(0, dash)));
    std::string second(trimmedOfBlanks(rest));
    if (format == artistTitleFormat)
        return Request{std::move(first), std::move(second)};
    return Request{std::move(second), std::move(first)};
}

void startMatching(ContentView& view) {
    if (view.inputMode.get() == InputMode::spotify) {
        importSpotifyPlaylist(view, view.spotifyURLInput.get(), startMatching);
        return;
    }
    if (view.trackDict.get().empty() || view.matchInput.get().empty())
        return;
    view.isMatching.set(true);
    matchLines(wantedLines(view.matchInput.get()), view);
}

} // namespace orvalen
