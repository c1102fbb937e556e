#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

namespace orvalen {

/// Collects field changes and notifies the views of them together, at most sixty times a
/// second. Main thread.
class ChangeNotifier : public QObject {
    Q_OBJECT

public:
    ChangeNotifier();
    /// Emits `notified` soon; further calls before that change nothing.
    void schedule();

signals:
    void notified();

private:
    void notifyViews();

    QTimer timer_;
    QElapsedTimer sinceLast_;
};

} // namespace orvalen
