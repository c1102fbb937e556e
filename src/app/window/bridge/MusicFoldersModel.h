#pragma once

#include "app/state/ContentView.h"

#include <QAbstractListModel>
#include <QString>
#include <QtQml/qqmlregistration.h>
#include <vector>

namespace orvalen {

/// The folders that the user added, each with the count of its indexed tracks in words.
class MusicFoldersModel : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT

public:
    enum Role { path = Qt::UserRole, shownPath, countText, notConnected };

    explicit MusicFoldersModel(ContentView& view);

    /// Brings the rows up to date; counts again only what the folders or the index have changed.
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
    LibraryIndex counted_; ///< the index that the counts were taken from
    std::vector<Row> rows_;
    std::vector<Location> watched_;
    std::vector<Location> notConnected_; ///< of the watched ones
};

} // namespace orvalen
