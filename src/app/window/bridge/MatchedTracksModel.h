#pragma once

#include "app/state/ContentView.h"
#include "matching/ReviewDecisions.h"

#include <QAbstractListModel>
#include <QtQml/qqmlregistration.h>
#include <initializer_list>
#include <vector>

namespace orvalen {

/// The result rows as the views show them. Of each row it keeps a small record of
/// what the views show, to find out which rows have changed.
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

    /// Tells the views which rows are not as they were; resets when the list is another one. True on a reset.
    /// What can change on the page is looked for; a page that opens anew may show the same rows with other
    /// texts, from a session that was edited by hand, and resets.
    bool refresh(bool opensAnew = false);
    /// Whether a row stood for the previewed track, or for none while nothing was previewed, at the last
    /// refresh.
    bool stoodForPreview() const;

    /// How many rows stand at each decision, by its value.
    QList<int> decisionCounts() const;
    /// Returns the next row with one of these decisions, after `from` (`by` 1) or before it (`by` -1). The
    /// search wraps around; -1 for none.
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
        bool pauses = false;
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
