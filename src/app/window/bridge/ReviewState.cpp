#include "app/window/bridge/ReviewState.h"

#include "app/window/bridge/Drops.h"
#include "app/window/bridge/QtText.h"
#include "app/window/bridge/TextDirection.h"
#include "core/Keys.h"
#include "library/AudioMetadata.h"
#include "matching/EarlierCandidates.h"
#include "matching/MatchReview.h"
#include "preview/PreviewPlayer.h"
#include "session/SessionFiles.h"

#include <utility>

namespace orvalen {
namespace {

/// Returns the row at the position, or null.
const MatchedTrack* rowAt(const ContentView& view, int row) {
    const auto& rows = view.matchedTracks.get();
    const auto position = static_cast<std::size_t>(row);
    return row >= 0 && position < rows.size() ? &rows[position] : nullptr;
}

/// Returns the next row for whose normalised label `fits` returns true, from row `from` on in steps of `by`;
/// -1 if no row does. The search wraps around.
template <typename Fits>
int nextRow(const std::vector<MatchedTrack>& rows, int from, int by, Fits fits) {
    const int count = static_cast<int>(rows.size());
    for (int step = 0; step < count; ++step) {
        const int row = ((from + step * by) % count + count) % count;
        if (fits(normalize(rowLabel(rows[static_cast<std::size_t>(row)]))))
            return row;
    }
    return -1;
}

/// Returns the row's candidate, or null.
const Track* optionAt(const ContentView& view, int row, int option) {
    const MatchedTrack* match = rowAt(view, row);
    const auto position = static_cast<std::size_t>(option);
    return match && option >= 0 && position < match->options.size() ? &match->options[position] : nullptr;
}

/// Pauses or resumes the candidate, or plays it while another candidate of the row is previewed.
void toggleCandidate(ContentView& view, const MatchedTrack& row, const Track& track) {
    if (isSameTrackAmong(row.options, view.selectedTrack.get(), track))
        togglePreview(view, track);
    else
        playPreview(view, track);
}

} // namespace

ReviewState::ReviewState(ContentView& view, ChangeNotifier& notifier)
    : StateProperties(view, notifier), decisions_(view), rows_(view, decisions_) {
    follow(view.matchedTracks, view.selectedTrack, view.isPlaying, view.showResultsPage, view.isAutoSaving,
           view.earlierChoices, view.previousSessionIsKept);
    onScreen_ = shown();
}

void ReviewState::refresh() {
    // When rows disappear, a preview of one of them stops.
    bool stoodForPreview = rows_.stoodForPreview();
    const bool wasOnScreen = std::exchange(onScreen_, shown());
    const bool replaced = rows_.refresh(onScreen_ && !wasOnScreen);
    // The preview may have started since the last refresh, which did not see it.
    stoodForPreview |= !replaced && rows_.stoodForPreview();
    if (wasOnScreen && stoodForPreview && (replaced || !onScreen_)) {
        stopPreviewIfCurrent(view(), view().selectedTrack.get());
        rows_.refresh();
    }
    emit changed();
}

QString ReviewState::summary() const {
    return toQString(selectionSummary(view().matchedTracks.get()));
}

void ReviewState::include(int row, bool include) {
    if (rowAt(view(), row) != nullptr)
        decisions_.include(static_cast<std::size_t>(row), include);
}

void ReviewState::choose(int row, int option) {
    if (const Track* track = optionAt(view(), row, option))
        decisions_.choose(static_cast<std::size_t>(row), std::string(track->path));
}

QStringList ReviewState::optionPaths(int row) const {
    QStringList paths;
    if (const MatchedTrack* match = rowAt(view(), row)) {
        for (const Track& option : match->options)
            paths.append(directedPath(toShownText(option.path)));
        if (const auto earlier = earlierOption(view(), *match))
            paths[static_cast<qsizetype>(*earlier)].prepend("chosen earlier · ");
    }
    return paths;
}

QString ReviewState::earlierText() const {
    const auto count = earlierCandidates(view()).size();
    return count == 0 ? QString()
                      : QString::number(count) + (count == 1 ? " earlier choice" : " earlier choices");
}

void ReviewState::useEarlierChoices() {
    for (const EarlierCandidate& candidate : earlierCandidates(view()))
        choose(static_cast<int>(candidate.row), static_cast<int>(candidate.option));
}

void ReviewState::loadPrevious() {
    loadPreviousSession(view());
}

void ReviewState::browse(int row) {
    later([row](ContentView& state) {
        if (rowAt(state, row) != nullptr)
            attachBrowsedFile(state, static_cast<std::size_t>(row));
    });
}

QString ReviewState::playingPath() const {
    const auto& track = view().selectedTrack.get();
    return track && view().isPlaying.get() ? directedPath(toShownText(track->path)) : QString();
}

void ReviewState::previewOption(int row, int option) {
    if (const Track* track = optionAt(view(), row, option))
        toggleCandidate(view(), *rowAt(view(), row), Track(*track));
}

int ReviewState::next(int decision, int from, int by) const {
    return decision < 0 ? rows_.nextRow({RowDecision::noFile, RowDecision::undecided}, from, by)
                        : rows_.nextRow({static_cast<RowDecision>(decision)}, from, by);
}

int ReviewState::find(const QString& text, int from, int by) const {
    const std::string needle = normalize(toUtf8(text));
    return nextRow(view().matchedTracks.get(), from, by,
                   [&](const std::string& label) { return containsNormalized(label, needle); });
}

int ReviewState::findInitial(const QString& letter, int from) const {
    const std::string initial = normalize(toUtf8(letter));
    return nextRow(view().matchedTracks.get(), from, 1,
                   [&](const std::string& label) { return !initial.empty() && label.starts_with(initial); });
}

int ReviewState::undo() {
    const std::optional<std::size_t> row = decisions_.undo();
    return row ? static_cast<int>(*row) : -1;
}

bool ReviewState::canTake(const QList<QUrl>& urls) const {
    return audioFile(urls) && !showsAlert(view());
}

void ReviewState::attach(int row, const QList<QUrl>& urls) {
    if (rowAt(view(), row) != nullptr && canTake(urls))
        attachFile(view(), static_cast<std::size_t>(row), audioFile(urls)->path);
}

void ReviewState::togglePreview(int row) {
    const MatchedTrack* match = rowAt(view(), row);
    if (match && match->selectedTrack)
        toggleCandidate(view(), *match, Track(*match->selectedTrack));
}

} // namespace orvalen
