#pragma once

#include "app/window/bridge/MatchedTracksModel.h"
#include "app/window/bridge/StateProperties.h"

#include <QList>
#include <QString>
#include <QUrl>

namespace orvalen {

/// The results page: its rows, their choices, and whether it is shown. Rows are identified by position.
class ReviewState : public orvalen::StateProperties {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(orvalen::MatchedTracksModel* rows READ rows CONSTANT)
    Q_PROPERTY(bool shown READ shown NOTIFY changed)
    Q_PROPERTY(QString summary READ summary NOTIFY changed)
    Q_PROPERTY(QList<int> counts READ counts NOTIFY changed)
    Q_PROPERTY(QString playingPath READ playingPath NOTIFY changed)
    Q_PROPERTY(bool autoSaving READ autoSaving NOTIFY changed)
    Q_PROPERTY(QString earlierText READ earlierText NOTIFY changed)
    Q_PROPERTY(bool previousIsKept READ previousIsKept NOTIFY changed)

public:
    ReviewState(ContentView& view, ChangeNotifier& notifier);

    MatchedTracksModel* rows() { return &rows_; }
    bool shown() const { return view().showResultsPage.get(); }
    QString summary() const;
    /// How many rows stand at each MatchedTracksModel::Decision, by its value.
    QList<int> counts() const { return rows_.decisionCounts(); }
    /// The file that is being played; empty for none.
    QString playingPath() const;
    bool autoSaving() const { return view().isAutoSaving.get(); }
    /// How many rows have a candidate that was chosen in an earlier run; empty for none.
    QString earlierText() const;
    /// Whether the rows that these replaced can be loaded again.
    bool previousIsKept() const { return view().previousSessionIsKept.get(); }

    Q_INVOKABLE void close() { view().showResultsPage.set(false); }
    Q_INVOKABLE void includeAll(bool include) { decisions_.includeAll(include); }
    Q_INVOKABLE void include(int row, bool include);
    Q_INVOKABLE void choose(int row, int option);
    /// Where the row's candidates lie, for their names may be the same; with a mark at the one that was
    /// chosen in an earlier run.
    Q_INVOKABLE QStringList optionPaths(int row) const;
    Q_INVOKABLE void browse(int row);
    /// Whether letting these go on a row attaches a file to it.
    Q_INVOKABLE bool canTake(const QList<QUrl>& urls) const;
    Q_INVOKABLE void attach(int row, const QList<QUrl>& urls);
    Q_INVOKABLE void useEarlierChoices();
    Q_INVOKABLE void loadPrevious();
    Q_INVOKABLE void togglePreview(int row);
    /// Plays or pauses a candidate without choosing it.
    Q_INVOKABLE void previewOption(int row, int option);
    /// Returns the next row with the decision, after `from` (`by` 1) or before it (`by` -1); -1 for none.
    /// A decision of -1 means every row that has no file or no choice yet.
    Q_INVOKABLE int next(int decision, int from, int by) const;
    /// The next row whose label contains the text. Searches from `from` in steps of `by`; returns -1 for
    /// none.
    Q_INVOKABLE int find(const QString& text, int from, int by) const;
    /// Takes back the last tick or choice. Returns the row concerned; -1 when there is nothing to take back.
    Q_INVOKABLE int undo();

protected:
    void refresh() override;

private:
    ReviewDecisions decisions_;
    MatchedTracksModel rows_;
    bool onScreen_ = false; ///< whether the rows were on screen at the last refresh
};

} // namespace orvalen
