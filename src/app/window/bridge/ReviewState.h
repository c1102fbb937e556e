#pragma once

#include "app/window/bridge/MatchedTracksModel.h"
#include "app/window/bridge/StateProperties.h"

#include <QList>
#include <QString>
#include <QUrl>

namespace orvalen {

/// The results page: its rows, the user's decisions, and whether it is shown. Rows are identified by
/// position.
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
    /// The number of rows with each MatchedTracksModel::Decision, by its value.
    QList<int> counts() const { return rows_.decisionCounts(); }
    /// The path of the playing file as the lists show it; empty if none plays.
    QString playingPath() const;
    bool autoSaving() const { return view().isAutoSaving.get(); }
    /// Says how many rows have a candidate that was chosen in an earlier run; empty if none.
    QString earlierText() const;
    /// Returns whether the previous rows can be loaded again.
    bool previousIsKept() const { return view().previousSessionIsKept.get(); }

    Q_INVOKABLE void close() { view().showResultsPage.set(false); }
    Q_INVOKABLE void includeAll(bool include) { decisions_.includeAll(include); }
    Q_INVOKABLE void include(int row, bool include);
    Q_INVOKABLE void choose(int row, int option);
    /// Returns the paths of the row's candidates, for display. The path of a candidate that was chosen in an
    /// earlier run begins with "chosen earlier · ".
    Q_INVOKABLE QStringList optionPaths(int row) const;
    Q_INVOKABLE void browse(int row);
    /// Returns whether a row accepts the dragged files: exactly one audio file, and no alert is shown.
    Q_INVOKABLE bool canTake(const QList<QUrl>& urls) const;
    Q_INVOKABLE void attach(int row, const QList<QUrl>& urls);
    Q_INVOKABLE void useEarlierChoices();
    Q_INVOKABLE void loadPrevious();
    Q_INVOKABLE void togglePreview(int row);
    /// Plays or pauses a candidate without selecting it.
    Q_INVOKABLE void previewOption(int row, int option);
    /// Returns the next row with the decision, after `from` (`by` 1) or before it (`by` -1); -1 if there is
    /// none. A decision of -1 means every row without a file or without a choice.
    Q_INVOKABLE int next(int decision, int from, int by) const;
    /// Returns the next row whose label contains the text, from `from` on in steps of `by`; -1 if there is
    /// none.
    Q_INVOKABLE int find(const QString& text, int from, int by) const;
    /// Returns the next row whose label starts with the letter, from row `from` on; -1 if no label does. The
    /// search wraps around.
    Q_INVOKABLE int findInitial(const QString& letter, int from) const;
    /// Undoes the last tick or choice. Returns the row concerned, or -1 if there is nothing to undo.
    Q_INVOKABLE int undo();

protected:
    void refresh() override;

private:
    ReviewDecisions decisions_;
    MatchedTracksModel rows_;
    bool onScreen_ = false; ///< whether the rows were shown at the last refresh
};

} // namespace orvalen
