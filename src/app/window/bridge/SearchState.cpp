#include "app/window/bridge/SearchState.h"

#include "app/window/bridge/QtText.h"
#include "app/window/bridge/TextDirection.h"
#include "library/AudioMetadata.h"
#include "matching/MatchReview.h"
#include "matching/TrackSearch.h"
#include "preview/PreviewPlayer.h"

#include <algorithm>
#include <utility>

namespace orvalen {
namespace {

/// The number of rows per suggestion job. Few, so that a search does not wait long for the match queue.
constexpr std::size_t rowsAtOnce = 8;

std::vector<FoundTrack> shown(const LibraryCatalog& catalog, const std::vector<std::size_t>& positions) {
    std::vector<FoundTrack> tracks;
    for (const std::size_t position : positions) {
        Track track = catalog.index().track(position).toTrack();
        QString label = toQString(optionLabel(track));
        tracks.push_back({std::move(label), std::move(track)});
    }
    return tracks;
}

QStringList labelsOf(const std::vector<FoundTrack>& tracks) {
    QStringList labels;
    for (const FoundTrack& track : tracks)
        labels.append(track.label);
    return labels;
}

} // namespace

SearchState::SearchState(ContentView& view, ChangeNotifier& notifier) : StateProperties(view, notifier) {
    follow(view.matchedTracks, view.showResultsPage);
    // The field is written if the library is replaced, but not if a file is attached.
    observe(view.trackCount, [this] { index_.reset(); });
}

void SearchState::refresh() {
    const auto& rows = view().matchedTracks.get();
    const std::optional<UUID> first = rows.empty() ? std::nullopt : std::optional(rows.front().id);
    if (first != firstRow_) {
        firstRow_ = first;
        looked_ = 0;
        suggestions_.clear();
        emit suggested();
    }
    if (view().showResultsPage.get())
        suggest();
    else
        index_.reset();
    emit changed();
}

const LibraryIndex& SearchState::index() {
    if (!index_)
        index_ = view().trackDict.get();
    return *index_;
}

QStringList SearchState::labels() const {
    return labelsOf(found_);
}

QStringList SearchState::paths() const {
    QStringList paths;
    for (const FoundTrack& track : found_)
        paths.append(directedPath(toShownText(track.track.path)));
    return paths;
}

QString SearchState::begin(int row) {
    const auto& rows = view().matchedTracks.get();
    end();
    if (row < 0 || static_cast<std::size_t>(row) >= rows.size())
        return {};
    const MatchedTrack& match = rows[static_cast<std::size_t>(row)];
    row_ = match.id;
    QString text = toQString(match.artist + " " + match.title);
    look(text);
    return text;
}

void SearchState::end() {
    row_.reset();
    wantedText_.reset();
    receive({}, {});
}

void SearchState::look(const QString& text) {
    wantedText_ = text;
    if (!searching_)
        search();
}

void SearchState::search() {
    searching_ = true;
    const QString text = std::exchange(wantedText_, std::nullopt).value_or(QString());
    onMatchQueue(
        [index = index(), text] {
            const LibraryCatalog catalog(index);
            return shown(catalog, findTracks(catalog, toUtf8(text)));
        },
        [this, text](std::vector<FoundTrack> tracks) {
            searching_ = false;
            if (wantedText_)
                search();
            else if (row_)
                receive(text, std::move(tracks));
        });
}

void SearchState::receive(const QString& text, std::vector<FoundTrack> tracks) {
    answered_ = text;
    found_ = std::move(tracks);
    emit found();
}

void SearchState::attach(int found) {
    if (row_ && found >= 0 && static_cast<std::size_t>(found) < found_.size())
        attachTo(*row_, found_[static_cast<std::size_t>(found)].track.path);
}

void SearchState::preview(int found) {
    if (found >= 0 && static_cast<std::size_t>(found) < found_.size())
        togglePreview(view(), Track(found_[static_cast<std::size_t>(found)].track));
}

std::vector<SearchState::Wanted> SearchState::nextRowsToSuggest() {
    const auto& rows = view().matchedTracks.get();
    std::vector<Wanted> wanted;
    for (; looked_ < rows.size() && wanted.size() < rowsAtOnce; ++looked_)
        if (const MatchedTrack& row = rows[looked_]; row.options.empty())
            wanted.push_back({row.id, row.artist, row.title});
    return wanted;
}

void SearchState::suggest() {
    if (suggesting_)
        return;
    std::vector<Wanted> wanted = nextRowsToSuggest();
    if (wanted.empty())
        return;
    suggesting_ = true;
    onMatchQueue(
        [index = index(), wanted = std::move(wanted)] {
            const LibraryCatalog catalog(index);
            std::vector<Suggestions> suggestions;
            for (const Wanted& row : wanted)
                suggestions.push_back(
                    {row.id, shown(catalog, suggestTracks(catalog, {row.artist, row.title}))});
            return suggestions;
        },
        [this](std::vector<Suggestions> suggestions) { receiveSuggestions(std::move(suggestions)); });
}

void SearchState::receiveSuggestions(std::vector<Suggestions> suggestions) {
    suggesting_ = false;
    for (Suggestions& row : suggestions)
        suggestions_.insert_or_assign(row.id, std::move(row.tracks));
    emit suggested();
    if (view().showResultsPage.get())
        suggest();
}

const std::vector<FoundTrack>* SearchState::suggestionsFor(int row) const {
    const auto& rows = view().matchedTracks.get();
    if (row < 0 || static_cast<std::size_t>(row) >= rows.size())
        return nullptr;
    const MatchedTrack& match = rows[static_cast<std::size_t>(row)];
    const auto known = suggestions_.find(match.id);
    return known == suggestions_.end() || !match.options.empty() ? nullptr : &known->second;
}

const FoundTrack* SearchState::suggestionAt(int row, int suggestion) const {
    const auto* tracks = suggestionsFor(row);
    const auto position = static_cast<std::size_t>(suggestion);
    return tracks && suggestion >= 0 && position < tracks->size() ? &(*tracks)[position] : nullptr;
}

QStringList SearchState::suggestionsOf(int row) const {
    const auto* tracks = suggestionsFor(row);
    return tracks ? labelsOf(*tracks) : QStringList();
}

void SearchState::take(int row, int suggestion) {
    if (const FoundTrack* found = suggestionAt(row, suggestion))
        attachTo(view().matchedTracks.get()[static_cast<std::size_t>(row)].id, found->track.path);
}

void SearchState::previewSuggestion(int row, int suggestion) {
    if (const FoundTrack* found = suggestionAt(row, suggestion))
        togglePreview(view(), Track(found->track));
}

void SearchState::attachTo(const UUID& id, const std::string& path) {
    const auto& rows = view().matchedTracks.get();
    const auto row = std::ranges::find(rows, id, &MatchedTrack::id);
    if (row != rows.end())
        attachFile(view(), static_cast<std::size_t>(row - rows.begin()), path);
}

} // namespace orvalen
