#pragma once

#include <QAbstractListModel>
#include <QString>
#include <QTimer>
#include <QtQml/qqmlregistration.h>
#include <atomic>
#include <cstddef>
#include <deque>

namespace orvalen {

class ConsoleLog;

/// The newest console lines of this run, the newest last. Main thread; other threads may write to the log.
class LogModel : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    /// The number of lines that were written since the log was last shown.
    Q_PROPERTY(int unseen READ unseen NOTIFY changed)
    /// Set to true while the user sees the lines; `unseen` is then 0.
    Q_PROPERTY(bool shown READ shown WRITE setShown NOTIFY changed)

public:
    explicit LogModel(ConsoleLog& log);
    ~LogModel() override;
    LogModel(const LogModel&) = delete;
    LogModel& operator=(const LogModel&) = delete;

    int unseen() const;
    bool shown() const { return shown_; }
    void setShown(bool shown);
    /// Copies the rows between two positions, in any order, to the clipboard.
    Q_INVOKABLE void copy(int from, int to) const;
    Q_INVOKABLE void copyAll() const;

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

signals:
    void changed();

private:
    void follow();

    ConsoleLog& log_;
    std::atomic<bool> isFollowing_ = false; ///< a call of follow() is pending
    QTimer timer_;
    std::deque<QString> lines_;
    std::size_t next_ = 0; ///< number of the first line that is not in lines_ yet
    std::size_t seen_ = 0; ///< number of the first unseen line
    bool shown_ = false;
};

} // namespace orvalen
