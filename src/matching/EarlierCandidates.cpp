#include "matching/EarlierCandidates.h"

#include "app/state/ContentView.h"
#include "core/Keys.h"

namespace orvalen {

std::optional<std::size_t> earlierOption(const ContentView& view, const MatchedTrack& row) {
    const auto& choices = view.earlierChoices.get();
    if (choices.empty())
        return std::nullopt;
    const auto choice = choices.find(libraryKey(row.artist, row.title));
    if (choice == choices.end())
        return std::nullopt;
    const auto option = findByPath(row.options, choice->second);
    if (option == row.options.end())
        return std::nullopt;
    return static_cast<std::size_t>(option - row.options.begin());
}

std::vector<EarlierCandidate> earlierCandidates(const ContentView& view) {
    std::vector<EarlierCandidate> result;
    const auto& rows = view.matchedTracks.get();
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const auto option = earlierOption(view, rows[i]);
        const auto& selected = rows[i].selectedTrack;
        if (option && (!selected || selected->path != rows[i].options[*option].path))
            result.push_back({i, *option});
    }
    return result;
}

} // namespace orvalen
