#include "app/window/bridge/MusicFoldersModel.h"

#include "app/window/bridge/QtText.h"
#include "app/window/bridge/TextDirection.h"
#include "core/FolderCount.h"
#include "core/LibraryIndex.h"
#include "core/Track.h"
#include "platform/DriveWatch.h"

#include <QPointer>

#include <algorithm>
#include <utility>

namespace orvalen {

MusicFoldersModel::MusicFoldersModel(ContentView& view) : view_(view) {
    refresh();
}

void MusicFoldersModel::refresh() {
    watchDrives();
    replaceRows(currentRows());
    counted_ = view_.trackDict.get();
}

void MusicFoldersModel::watchDrives() {
    if (view_.musicFolderURLs.get() == watched_)
        return;
    watched_ = view_.musicFolderURLs.get();
    view_.platform.driveWatch.watch(watched_, [self = QPointer(this)](std::vector<Location> absent) {
        MusicFoldersModel* const model = self.data();
        if (model == nullptr)
            return;
        model->notConnected_ = std::move(absent);
        model->replaceRows(model->currentRows());
    });
}

std::vector<MusicFoldersModel::Row> MusicFoldersModel::currentRows() const {
    const LibraryIndex& index = view_.trackDict.get();
    const bool sameTracks = index.sharesTracksWith(counted_);
    std::vector<Row> rows;
    for (const Location& folder : view_.musicFolderURLs.get()) {
        Row row{toQString(folder.path), {}, std::ranges::find(notConnected_, folder) != notConnected_.end()};
        const auto known = std::find_if(rows_.begin(), rows_.end(),
                                        [&](const Row& candidate) { return candidate.path == row.path; });
        if (sameTracks && known != rows_.end()) {
            row.countText = known->countText;
        } else if (const auto count = countTracksUnderFolder(index, folder.path); count > 0) {
            row.countText = toQString(trackCountText(count));
        }
        rows.push_back(std::move(row));
    }
    return rows;
}

void MusicFoldersModel::replaceRows(std::vector<Row> rows) {
    const auto samePath = [](const Row& left, const Row& right) { return left.path == right.path; };
    const auto [oldHead, newHead] =
        std::mismatch(rows_.begin(), rows_.end(), rows.begin(), rows.end(), samePath);
    const auto head = static_cast<int>(oldHead - rows_.begin());
    const auto oldTail = std::mismatch(rows_.rbegin(), std::make_reverse_iterator(oldHead), rows.rbegin(),
                                       std::make_reverse_iterator(newHead), samePath);
    const auto tail = static_cast<int>(oldTail.first - rows_.rbegin());
    const int oldLast = static_cast<int>(rows_.size()) - tail - 1;
    const int newLast = static_cast<int>(rows.size()) - tail - 1;

    if (oldLast >= head) {
        beginRemoveRows({}, head, oldLast);
        rows_.erase(rows_.begin() + head, rows_.begin() + oldLast + 1);
        endRemoveRows();
    }
    if (newLast >= head) {
        beginInsertRows({}, head, newLast);
        rows_.insert(rows_.begin() + head, rows.begin() + head, rows.begin() + newLast + 1);
        endInsertRows();
    }
    for (std::size_t i = 0; i < rows.size(); ++i) {
        if (rows_[i] == rows[i])
            continue;
        rows_[i] = std::move(rows[i]);
        const QModelIndex changedRow = index(static_cast<int>(i));
        emit dataChanged(changedRow, changedRow, {countText, notConnected});
    }
}

int MusicFoldersModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

QVariant MusicFoldersModel::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const Row& row = rows_[static_cast<std::size_t>(index.row())];
    switch (role) {
    case path:
        return row.path;
    case shownPath:
        return directedPath(row.path);
    case countText:
        return row.countText;
    case notConnected:
        return row.notConnected;
    default:
        return {};
    }
}

QHash<int, QByteArray> MusicFoldersModel::roleNames() const {
    return {
        {path, "path"}, {shownPath, "shownPath"}, {countText, "countText"}, {notConnected, "notConnected"}};
}

} // namespace orvalen
