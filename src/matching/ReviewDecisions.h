#pragma once

#include "core/MatchedTrack.h"

#include <cstddef>
#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvalen {

struct ContentView;

/// What is left to do for a row.
enum class RowDecision {
    noFile,    ///< no candidate
    undecided, ///< several candidates, none chosen by the user
    proposed,  ///< one candidate, taken by the run
    chosen,    ///< the user chose the file, now or for an earlier run
    included,  ///< has a file and goes into the playlist
};

/// The user's decisions on the rows of one list: which files the user chose, and the steps that can be
/// undone. A new list in the state drops both. Main thread. Rows are identified by their position; a position
/// that no row has is ignored.
class ReviewDecisions {
public:
    static constexpr std::size_t mostSteps = 100;

    explicit ReviewDecisions(ContentView& view) : view_(view) {}

    void include(std::size_t row, bool value);
    void includeAll(bool value);
    /// Selects the first candidate with the path and stores it as the preferred match.
    void choose(std::size_t row, std::string_view path);
    /// Takes back the last of these three and the preferred match that it stored. Returns the row concerned,
    /// the first row for a step that concerned all, or nothing when there is no step left.
    std::optional<std::size_t> undo();

    /// The decision on each row. Reads the preferred matches once for each list, without a console line when
    /// that fails; the rows' files then count as proposed.
    std::vector<RowDecision> decisions();

private:
    struct Step {
        std::size_t row = 0;
        std::vector<bool> includes; ///< from `row` on; empty for a choice
        std::optional<Track> selected;
        std::optional<std::string> chosenPath;
        std::optional<std::optional<std::string>> preferredPath; ///< nothing when it could not be read
    };

    /// Starts anew when the state holds another list.
    void followList();
    bool isChosen(std::size_t row) const;
    void remember(Step step);
    void undoChoice(Step step);

    ContentView& view_;
    std::vector<UUID> ids_;
    std::vector<std::size_t> proposals_; ///< each row's number of candidates when the list was new
    std::vector<std::optional<std::string>> chosenPaths_;
    std::deque<Step> steps_;
};

} // namespace orvalen
