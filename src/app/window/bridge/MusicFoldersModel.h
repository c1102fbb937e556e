#pragma once

#include "app/state/ContentView.h"

#include <QAbstractListModel>
#include <QString>
#include <QtQml/qqmlregistration.h>
#include <vector>

namespace orvalen {

/// The music folders, each with the number of its tracks as text.
class MusicFoldersModel : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT

public:
    enum Role { path = Qt::UserRole, shownPath, countText, notConnected };

    explicit MusicFoldersModel(ContentView& view);

    /// Updates the rows. Counts again only if the folders or the index have changed.
    void refresh();

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

private:
    struct Row {
        QString path;
        QString countText;
        bool notConnected = false;
        bool operator==(const Row&) const = default;
    };

    std::vector<Row> currentRows() const;
    void replaceRows(std::vector<Row> rows);
    void watchDrives();

    ContentView& view_;
    LibraryIndex counted_; ///< the index in which the tracks were counted
    std::vector<Row> rows_;
    std::vector<Location> watched_;      ///< the folders that were passed to DriveWatch
    std::vector<Location> notConnected_; ///< those of `watched_` whose drive is not connected
};

} // namespace orvalen
