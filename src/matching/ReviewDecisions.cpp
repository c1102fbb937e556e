#include "matching/ReviewDecisions.h"

#include "app/state/ContentView.h"
#include "core/Keys.h"
#include "core/Text.h"
#include "library/EarlierChoices.h"
#include "library/PlaylistDatabaseManager.h"
#include "matching/MatchReview.h"

#include <algorithm>

namespace orvalen {
namespace {

std::string keyOf(const MatchedTrack& row) {
    return libraryKey(row.artist, row.title);
}

std::optional<std::string> earlierPath(const ContentView& view, const std::string& key) {
    const auto choice = view.earlierChoices.get().find(key);
    return choice == view.earlierChoices.get().end() ? std::nullopt : std::optional(choice->second);
}

/// Returns the path of each row's preferred match, or else of its earlier choice.
std::vector<std::optional<std::string>> chosenPathsOf(ContentView& view) {
    const auto& rows = view.matchedTracks.get();
    std::vector<std::optional<std::string>> paths(rows.size());
    const auto matches = rows.empty() ? std::nullopt : view.database().tryPreferredMatches();
    for (std::size_t i = 0; matches && i < rows.size(); ++i) {
        const std::string key = keyOf(rows[i]);
        const auto match = matches->find(key);
        paths[i] = match == matches->end() ? earlierPath(view, key) : std::optional(match->second);
    }
    return paths;
}

} // namespace

void ReviewDecisions::followList() {
    const auto& rows = view_.matchedTracks.get();
    if (std::ranges::equal(rows, ids_, {}, &MatchedTrack::id))
        return;
    ids_.resize(rows.size());
    proposals_.resize(rows.size());
    std::ranges::transform(rows, ids_.begin(), &MatchedTrack::id);
    std::ranges::transform(rows, proposals_.begin(),
                           [](const MatchedTrack& row) { return row.options.size(); });
    chosenPaths_ = chosenPathsOf(view_);
    steps_.clear();
}

bool ReviewDecisions::isChosen(std::size_t row) const {
    const MatchedTrack& match = view_.matchedTracks.get()[row];
    if (!match.selectedTrack)
        return false;
    const std::string& path = match.selectedTrack->path;
    if (chosenPaths_[row] && canonicallyEqual(*chosenPaths_[row], path))
        return true;
    // A run selects the first candidate or the preferred match. Any other selection, and candidates that were
    // added after the run, come from the user.
    for (std::size_t option = std::min<std::size_t>(1, proposals_[row]); option < match.options.size();
         ++option)
        if (canonicallyEqual(match.options[option].path, path))
            return true;
    return false;
}

std::vector<RowDecision> ReviewDecisions::decisions() {
    followList();
    const auto& rows = view_.matchedTracks.get();
    std::vector<RowDecision> result(rows.size());
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const MatchedTrack& row = rows[i];
        if (!row.selectedTrack)
            result[i] = row.options.empty() ? RowDecision::noFile : RowDecision::undecided;
        else if (row.include)
            result[i] = RowDecision::included;
        else if (isChosen(i))
            result[i] = RowDecision::chosen;
        else
            result[i] = showsPicker(row) ? RowDecision::undecided : RowDecision::proposed;
    }
    return result;
}

void ReviewDecisions::remember(Step step) {
    steps_.push_back(std::move(step));
    if (steps_.size() > mostSteps)
        steps_.pop_front();
}

void ReviewDecisions::include(std::size_t row, bool value) {
    followList();
    if (row >= ids_.size())
        return;
    Step step;
    step.row = row;
    step.includes.push_back(view_.matchedTracks.get()[row].include);
    remember(std::move(step));
    setInclude(view_, row, value);
}

void ReviewDecisions::includeAll(bool value) {
    followList();
    const auto& rows = view_.matchedTracks.get();
    if (rows.empty())
        return;
    Step step;
    step.includes.reserve(rows.size());
    for (const MatchedTrack& row : rows)
        step.includes.push_back(row.include);
    remember(std::move(step));
    setIncludeForAll(view_, value);
}

void ReviewDecisions::choose(std::size_t row, std::string_view path) {
    followList();
    if (row >= ids_.size())
        return;
    const MatchedTrack& match = view_.matchedTracks.get()[row];
    Step step;
    step.row = row;
    step.selected = match.selectedTrack;
    step.chosenPath = chosenPaths_[row];
    const std::string key = keyOf(match);
    step.preferredPath = view_.database().tryPreferredPath(key);
    step.earlierPath = earlierPath(view_, key);
    remember(std::move(step));
    chooseOption(view_, row, path);
    chosenPaths_[row] = std::string(path);
}

std::optional<std::size_t> ReviewDecisions::undo() {
    followList();
    if (steps_.empty())
        return std::nullopt;
    Step step = std::move(steps_.back());
    steps_.pop_back();
    const std::size_t row = step.row;
    if (step.includes.empty())
        undoChoice(std::move(step));
    else
        view_.matchedTracks.update([&](std::vector<MatchedTrack>& rows) {
            for (std::size_t i = 0; i < step.includes.size(); ++i)
                rows[row + i].include = step.includes[i];
        });
    return row;
}

void ReviewDecisions::undoChoice(Step step) {
    const std::size_t row = step.row;
    view_.matchedTracks.update(
        [&](std::vector<MatchedTrack>& rows) { rows[row].selectedTrack = std::move(step.selected); });
    chosenPaths_[row] = std::move(step.chosenPath);
    const std::string key = keyOf(view_.matchedTracks.get()[row]);
    if (step.earlierPath)
        keepEarlierChoice(view_, key, *step.earlierPath);
    if (!step.preferredPath)
        return;
    if (*step.preferredPath)
        view_.database().savePreferredMatch(key, **step.preferredPath);
    else
        view_.database().removePreferredMatch(key);
}

} // namespace orvalen
