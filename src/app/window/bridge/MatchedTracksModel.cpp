#include "app/window/bridge/MatchedTracksModel.h"

#include "app/window/bridge/QtText.h"
#include "app/window/bridge/TextDirection.h"
#include "matching/MatchReview.h"

#include <QStringList>
#include <algorithm>
#include <functional>

namespace orvalen {
namespace {

/// Returns a hash of everything that can change in a row while the page is open.
std::size_t contentHash(const MatchedTrack& row) {
    std::size_t hash = row.options.size();
    const auto mix = [&](std::size_t value) { hash = hash * 1099511628211U ^ value; };
    mix(row.include ? 1 : 0);
    mix(row.found ? 1 : 0);
    mix(row.selectedTrack ? 1 : 0);
    if (row.selectedTrack) {
        mix(std::hash<std::string>{}(row.selectedTrack->path));
        mix(static_cast<std::size_t>(row.selectedTrack->bpm.value_or(-1)));
    }
    return hash;
}

QStringList optionLabels(const MatchedTrack& row) {
    QStringList labels;
    if (!showsPicker(row))
        return labels;
    labels.reserve(static_cast<qsizetype>(row.options.size()));
    for (const Track& option : row.options)
        labels.append(directedSong(toShownText(optionLabel(option))));
    return labels;
}

} // namespace

MatchedTracksModel::MatchedTracksModel(ContentView& view, ReviewDecisions& decisions)
    : view_(view), decisions_(decisions), shownRows_(currentRows()) {}

std::vector<MatchedTracksModel::ShownRow> MatchedTracksModel::currentRows() {
    const auto& previewed = view_.selectedTrack.get();
    const bool isPlaying = view_.isPlaying.get();
    const std::vector<RowDecision> decisions = decisions_.decisions();
    std::vector<ShownRow> shownRows;
    shownRows.reserve(decisions.size());
    for (const MatchedTrack& row : view_.matchedTracks.get())
        shownRows.push_back({row.id, contentHash(row), isHeaderBold(row, previewed),
                             isPlaying && isPreviewed(row, previewed), decisions[shownRows.size()]});
    return shownRows;
}

bool MatchedTracksModel::isSameList(const std::vector<ShownRow>& shownRows) const {
    return std::equal(shownRows.begin(), shownRows.end(), shownRows_.begin(), shownRows_.end(),
                      [](const ShownRow& left, const ShownRow& right) { return left.id == right.id; });
}

bool MatchedTracksModel::refresh(bool opensAnew) {
    std::vector<ShownRow> shownRows = currentRows();
    if (opensAnew || !isSameList(shownRows)) {
        beginResetModel();
        shownRows_ = std::move(shownRows);
        endResetModel();
        return true;
    }
    shownRows_.swap(shownRows);
    emitChanges(shownRows);
    return false;
}

void MatchedTracksModel::emitChanges(const std::vector<ShownRow>& old) {
    for (std::size_t first = 0; first < old.size(); ++first) {
        if (old[first] == shownRows_[first])
            continue;
        std::size_t last = first;
        while (last + 1 < old.size() && !(old[last + 1] == shownRows_[last + 1]))
            ++last;
        emit dataChanged(index(static_cast<int>(first)), index(static_cast<int>(last)));
        first = last;
    }
}

bool MatchedTracksModel::stoodForPreview() const {
    return std::any_of(shownRows_.begin(), shownRows_.end(),
                       [](const ShownRow& shownRow) { return shownRow.bold; });
}

QList<int> MatchedTracksModel::decisionCounts() const {
    QList<int> counts(Included + 1, 0);
    for (const ShownRow& row : shownRows_)
        ++counts[static_cast<int>(row.decision)];
    return counts;
}

int MatchedTracksModel::nextRow(std::initializer_list<RowDecision> decisions, int from, int by) const {
    const int count = rowCount();
    for (int step = 1; step <= count; ++step) {
        const int row = ((from + step * by) % count + count) % count;
        if (std::ranges::find(decisions, shownRows_[static_cast<std::size_t>(row)].decision) !=
            decisions.end())
            return row;
    }
    return -1;
}

int MatchedTracksModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(shownRows_.size());
}

QVariant MatchedTracksModel::data(const QModelIndex& index, int role) const {
    const auto& rows = view_.matchedTracks.get();
    // The state may already have other rows than the views.
    if (!index.isValid() || static_cast<std::size_t>(index.row()) >= std::min(rows.size(), shownRows_.size()))
        return {};
    const MatchedTrack& row = rows[static_cast<std::size_t>(index.row())];
    const auto& track = row.selectedTrack;
    switch (role) {
    case label:
        return directedSong(toShownText(rowLabel(row)));
    case header:
        return directedSong(toShownText(rowHeader(row)));
    case bold:
        return isHeaderBold(row, view_.selectedTrack.get());
    case options:
        return optionLabels(row);
    case picked:
        return pickedOption(row);
    case hasTrack:
        return track.has_value();
    case fileLine:
        return track ? directedPath(toShownText(fileText(*track))) : QString();
    case splitsPlaylist:
        return track && track->path.find_first_of("\r\n") != std::string::npos;
    case tempoLine:
        return track ? toQString(tempoText(*track)) : QString();
    case hasTempo:
        return track && track->bpm.has_value();
    case pauses:
    case playing:
        return view_.isPlaying.get() && isPreviewed(row, view_.selectedTrack.get());
    case included:
        return row.include;
    case decision:
        return static_cast<int>(shownRows_[static_cast<std::size_t>(index.row())].decision);
    default:
        return {};
    }
}

QHash<int, QByteArray> MatchedTracksModel::roleNames() const {
    return {{label, "label"},         {header, "header"},
            {bold, "bold"},           {options, "options"},
            {picked, "picked"},       {hasTrack, "hasTrack"},
            {fileLine, "fileLine"},   {splitsPlaylist, "splitsPlaylist"},
            {tempoLine, "tempoLine"}, {hasTempo, "hasTempo"},
            {pauses, "pauses"},       {playing, "playing"},
            {included, "included"},   {decision, "decision"}};
}

} // namespace orvalen
