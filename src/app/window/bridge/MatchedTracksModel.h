#pragma once

#include "app/state/ContentView.h"
#include "matching/ReviewDecisions.h"

#include <QAbstractListModel>
#include <QtQml/qqmlregistration.h>
#include <initializer_list>
#include <vector>

namespace orvalen {

/// The rows for the views. Keeps a small record of each shown row to detect changes.
class MatchedTracksModel : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT

public:
    enum Role {
        label = Qt::UserRole,
        header,
        bold,
        options,
        picked,
        hasTrack,
        fileLine,
        splitsPlaylist,
        tempoLine,
        hasTempo,
        pauses,
        playing,
        included,
        decision,
    };

    /// The values of RowDecision.
    enum Decision { NoCandidate, Undecided, Proposed, Chosen, Included };
    Q_ENUM(Decision)

    MatchedTracksModel(ContentView& view, ReviewDecisions& decisions);

    /// Reports changed rows to the views, or resets the model if the rows have other ids. Returns true after
    /// a reset. Detects only what can change while the page is open. With `opensAnew`, always resets: a
    /// session file that was edited by hand can have the same ids with other texts.
    bool refresh(bool opensAnew = false);
    /// Returns whether, at the last refresh, the previewed track was the selected track of a row. Also true
    /// if there was no previewed track and a row had no selected track.
    bool stoodForPreview() const;

    /// Returns the number of rows with each decision, indexed by Decision.
    QList<int> decisionCounts() const;
    /// Returns the next row with one of the decisions, after `from` (`by` 1) or before it (`by` -1). The
    /// search wraps around. Returns -1 if no row has it.
    int nextRow(std::initializer_list<RowDecision> decisions, int from, int by) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

private:
    struct ShownRow {
        UUID id;
        std::size_t content = 0;
        bool bold = false;
        bool playing = false;
        RowDecision decision = RowDecision::noFile;
        bool operator==(const ShownRow&) const = default;
    };

    std::vector<ShownRow> currentRows();
    bool isSameList(const std::vector<ShownRow>& shownRows) const;
    void emitChanges(const std::vector<ShownRow>& old);

    ContentView& view_;
    ReviewDecisions& decisions_;
    std::vector<ShownRow> shownRows_;
};

} // namespace orvalen
