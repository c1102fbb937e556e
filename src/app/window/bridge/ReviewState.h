#pragma once

#include "app/window/bridge/MatchedTracksModel.h"
#include "app/window/bridge/StateProperties.h"

#include <QList>
#include <QString>
#include <QUrl>

namespace orvalen {

/// The results page: its rows, their choices, and whether it is shown. A row is told by its position.
class ReviewState : public orvalen::StateProperties {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the window")
    Q_PROPERTY(orvalen::MatchedTracksModel* rows READ rows CONSTANT)
    Q_PROPERTY(bool shown READ shown NOTIFY changed)
    Q_PROPERTY(QString summary READ summary NOTIFY changed)
    Q_PROPERTY(bool autoSaving READ autoSaving NOTIFY changed)

public:
    ReviewState(ContentView& view, ChangeNotifier& notifier);

    MatchedTracksModel* rows() { return &rows_; }
    bool shown() const { return view().showResultsPage.get(); }
    QString summary() const;
    bool autoSaving() const { return view().isAutoSaving.get(); }

    Q_INVOKABLE void close() { view().showResultsPage.set(false); }
    Q_INVOKABLE void includeAll(bool include) { decisions_.includeAll(include); }
    Q_INVOKABLE void include(int row, bool include);
    Q_INVOKABLE void choose(int row, int option);
    /// Where the row's candidates lie: their names may be the same.
    Q_INVOKABLE QStringList optionPaths(int row) const;
    Q_INVOKABLE void browse(int row);
    /// Whether letting these go on a row attaches a file to it.
    Q_INVOKABLE bool canTake(const QList<QUrl>& urls) const;
    Q_INVOKABLE void attach(int row, const QList<QUrl>& urls);
    Q_INVOKABLE void togglePreview(int row);
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
