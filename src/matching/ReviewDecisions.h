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
    proposed,  ///< one candidate, selected by the run
    chosen,    ///< the user chose the file, in this run or an earlier one
    included,  ///< has a selected track and goes into the playlist
};

/// The user's decisions on the rows: which files the user chose, and the steps that can be undone. Both are
/// dropped when the state gets new rows. Main thread. Rows are identified by position; unknown positions are
/// ignored.
class ReviewDecisions {
public:
    static constexpr std::size_t mostSteps = 100;

    explicit ReviewDecisions(ContentView& view) : view_(view) {}

    void include(std::size_t row, bool value);
    void includeAll(bool value);
    /// Selects the first candidate with the path and stores the preferred match.
    void choose(std::size_t row, std::string_view path);
    /// Undoes the last call of include(), includeAll() or choose(), including the preferred match that it
    /// stored. Returns the row concerned (0 for includeAll()), or nullopt if there is nothing to undo.
    std::optional<std::size_t> undo();

    /// Returns the decision on each row. Reads the preferred matches once for each set of rows. If reading
    /// fails, rows count as proposed or undecided, and no error line is written.
    std::vector<RowDecision> decisions();

private:
    struct Step {
        std::size_t row = 0;
        std::vector<bool> includes; ///< from `row` on; empty for choose()
        std::optional<Track> selected;
        std::optional<std::string> chosenPath;
        std::optional<std::optional<std::string>> preferredPath; ///< nullopt if it could not be read
        std::optional<std::string> earlierPath;                  ///< path of the choice in `earlierChoices`
    };

    /// Resets everything if the state holds new rows.
    void followList();
    bool isChosen(std::size_t row) const;
    void remember(Step step);
    void undoChoice(Step step);

    ContentView& view_;
    std::vector<UUID> ids_;
    std::vector<std::size_t> proposals_; ///< each row's number of candidates when the rows were new
    std::vector<std::optional<std::string>> chosenPaths_;
    std::deque<Step> steps_;
};

} // namespace orvalen
